#ifndef JQSCOPE_WORK_RECKONING_H
#define JQSCOPE_WORK_RECKONING_H

#include <opencv2/core.hpp>

namespace jqscope {

/// Tells how far the camera has moved from one frame to the next where the stitcher no
/// longer knows its place, so that an arrow can point back. Compares small pictures of
/// the two frames as a whole; errors add up, and it is only ever a hint.
class Reckoning {
 public:
  void Clear() { m_before.release(); }
  /// The movement since the frame before, in pixels of the frame; (0, 0) where the two have
  /// nothing clear in common. To be called with every frame.
  cv::Point2d Step(const cv::Mat& frame);

 private:
  cv::Mat m_before;
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_RECKONING_H

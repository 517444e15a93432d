#ifndef JQ_PICTURE_SCRATCH_H
#define JQ_PICTURE_SCRATCH_H

#include <opencv2/core.hpp>

namespace jqstitching {

/// Working memory that keeps its size from frame to frame, so that a frame costs
/// no allocation and no fresh pages.
class ScratchPicture {
 public:
  /// A header on this memory, which grows where it must. Undefined contents. The
  /// header owns nothing and holds until the next call.
  cv::Mat shape(int rows, int cols, int type);

 private:
  cv::Mat m_memory;
};

}  // namespace jqstitching

#endif  // JQ_PICTURE_SCRATCH_H

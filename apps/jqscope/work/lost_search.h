#ifndef JQSCOPE_WORK_LOST_SEARCH_H
#define JQSCOPE_WORK_LOST_SEARCH_H

#include <QPoint>
#include <QVector>
#include <functional>
#include <opencv2/core.hpp>
#include <vector>

#include "work/finder.h"

namespace jqscope {

/// Decides when a lost frame is looked for, and among which earlier places: those nearest
/// to where the camera probably is with one frame, the next nearest with the next.
class LostSearch {
 public:
  /// Hands a frame and earlier places, nearest first, to whoever compares them.
  /// @return whether the search has begun
  using Begin = std::function<bool(const cv::Mat& frame, std::vector<KnownPlace> places)>;

  /// What the search looks at.
  struct Ground {
    cv::Mat mosaic;
    cv::Point origin;             ///< the first frame's corner in it
    cv::Size size;                ///< of a frame at the working scale
    const QVector<QPoint>& path;  ///< corners of the placed frames
    cv::Point around;             ///< where the camera probably is
  };

  void Clear() { m_lostFrames = m_compared = 0; }
  /// To be told of every frame. @param lost whether its place is not known
  void Follow(bool lost);
  bool IsLost() const { return m_lostFrames > 0; }
  /// Begins a search with this frame where it is worth one.
  /// @param image the frame as the camera gave it
  void Look(const cv::Mat& image, const Ground& ground, const Begin& begin);

 private:
  int m_lostFrames = 0;  // in a row
  int m_compared = 0;    // places that were compared since the run was lost
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_LOST_SEARCH_H

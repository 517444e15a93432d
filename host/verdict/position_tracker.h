#ifndef JQHOST_VERDICT_POSITION_TRACKER_H
#define JQHOST_VERDICT_POSITION_TRACKER_H

#include <opencv2/core.hpp>

namespace jqhost {

/// Follows where the first frame's corner lies while the mosaic grows, so that
/// positions of different times can be compared.
///
/// The mosaic starts as twice the frame with the frame in its middle and grows
/// by whole frames. Whether a growth was on the left (all positions move) or on
/// the right shows in the placed bounds: their left edge moves right exactly when
/// pixels were added before it, because a shift is less than a frame. The same
/// holds for top and bottom.
class PositionTracker {
 public:
  /// @param frame size of a frame at the working scale
  explicit PositionTracker(cv::Size frame);

  /// Goes on from a mosaic whose origin is known.
  void GoOn(cv::Size mosaic, const cv::Rect& placedBounds, cv::Point origin);

  /// To be called after every frame once the mosaic exists.
  void Update(cv::Size mosaic, const cv::Rect& placedBounds);

  /// The first frame's corner in the mosaic as it is now.
  cv::Point Origin() const { return m_origin; }

 private:
  cv::Size m_frame;
  cv::Size m_mosaic;
  cv::Rect m_bounds;
  cv::Point m_origin;
};

}  // namespace jqhost

#endif  // JQHOST_VERDICT_POSITION_TRACKER_H

#include "host/verdict/position_tracker.h"

namespace jqhost {

PositionTracker::PositionTracker(cv::Size frame)
    : m_frame(frame),
      m_mosaic(2 * frame.width, 2 * frame.height),
      m_origin(frame.width - frame.width / 2, frame.height - frame.height / 2) {
  m_bounds = cv::Rect(m_origin, frame);
}

void PositionTracker::GoOn(cv::Size mosaic, const cv::Rect& placedBounds, cv::Point origin) {
  m_mosaic = mosaic;
  m_bounds = placedBounds;
  m_origin = origin;
}

void PositionTracker::Update(cv::Size mosaic, const cv::Rect& placedBounds) {
  if (mosaic.width != m_mosaic.width && placedBounds.x > m_bounds.x) m_origin.x += m_frame.width;
  if (mosaic.height != m_mosaic.height && placedBounds.y > m_bounds.y) {
    m_origin.y += m_frame.height;
  }
  m_mosaic = mosaic;
  m_bounds = placedBounds;
}

}  // namespace jqhost

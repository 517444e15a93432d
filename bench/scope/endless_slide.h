#ifndef JQ_BENCH_SCOPE_ENDLESS_SLIDE_H
#define JQ_BENCH_SCOPE_ENDLESS_SLIDE_H

#include <opencv2/core.hpp>

#include "host/simulate/slide.h"

/// A slide without edges: after its own size it begins again, so that a mosaic of any size
/// can be taken from it. Neighbouring frames do not notice.
class EndlessSlide {
 public:
  explicit EndlessSlide(cv::Size frame)
      : m_frame(frame), m_slide(jqhost::PaintSlide(frame * 2, 1)) {}

  cv::Size Frame() const { return m_frame; }

  /// The frame with this top-left corner.
  cv::Mat Take(cv::Point corner) const {
    const auto wrap = [](int value, int size) { return ((value % size) + size) % size; };
    const cv::Point from(wrap(corner.x, m_slide.cols), wrap(corner.y, m_slide.rows));
    cv::Mat frame(m_frame, CV_8UC3);
    for (int y = 0; y < m_frame.height;) {
      const int sy = wrap(from.y + y, m_slide.rows);
      const int rows = std::min(m_frame.height - y, m_slide.rows - sy);
      for (int x = 0; x < m_frame.width;) {
        const int sx = wrap(from.x + x, m_slide.cols);
        const int columns = std::min(m_frame.width - x, m_slide.cols - sx);
        m_slide(cv::Rect(sx, sy, columns, rows)).copyTo(frame(cv::Rect(x, y, columns, rows)));
        x += columns;
      }
      y += rows;
    }
    return frame;
  }

 private:
  const cv::Size m_frame;
  const cv::Mat m_slide;
};

#endif  // JQ_BENCH_SCOPE_ENDLESS_SLIDE_H

#ifndef JQ_BLEND_GROWTH_H
#define JQ_BLEND_GROWTH_H

#include <cstdint>
#include <opencv2/core.hpp>

namespace jqstitching {

/// The sides on which a mosaic grows. Never two that face each other: the top and the
/// left come first.
struct Growth {
  bool top = false, bottom = false, left = false, right = false;

  bool any() const { return top || bottom || left || right; }
};

/// The sides that a frame with its top-left corner at (x, y) touches or crosses:
/// touching an edge counts as crossing it.
inline Growth GrowthFor(std::int64_t x, std::int64_t y, cv::Size frame, cv::Size mosaic) {
  Growth growth;
  growth.top = y <= 0;
  growth.bottom = !growth.top && y + frame.height >= mosaic.height;
  growth.left = x <= 0;
  growth.right = !growth.left && x + frame.width >= mosaic.width;
  return growth;
}

}  // namespace jqstitching

#endif  // JQ_BLEND_GROWTH_H

#ifndef JQ_BLEND_GROWTH_H
#define JQ_BLEND_GROWTH_H

#include <cstdint>
#include <opencv2/core.hpp>

#include "blend/kernels/borders.h"

namespace jqstitching {

/// The sides on which a mosaic grows. Never two that face each other: the top and the
/// left come first. On each of them it grows by one step, whatever is missing.
struct Growth {
  bool top = false, bottom = false, left = false, right = false;

  bool any() const { return top || bottom || left || right; }

  Borders borders(cv::Size step) const;

  /// How coordinates in the mosaic move: the box like the position, except at the top
  /// right corner. They wrap where they leave 32 bits.
  void movePosition(cv::Point& position, cv::Size step) const;
  void moveBox(cv::Point& boxMin, cv::Point& boxMax, cv::Size step) const;
};

/// The sides that a frame with its top-left corner at (x, y) touches or crosses:
/// touching an edge counts as crossing it.
Growth GrowthFor(std::int64_t x, std::int64_t y, cv::Size frame, cv::Size mosaic);

}  // namespace jqstitching

#endif  // JQ_BLEND_GROWTH_H

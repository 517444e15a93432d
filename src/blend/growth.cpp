#include "blend/growth.h"

namespace jqstitching {
namespace {

// Coordinates far outside the mosaic wrap; the placement that follows refuses them.
void Move(int& coordinate, std::int64_t by) {
  coordinate = static_cast<int>(coordinate + by);
}

}  // namespace

Borders Growth::borders(cv::Size step) const {
  Borders borders;
  if (top) borders.top = step.height;
  if (bottom) borders.bottom = step.height;
  if (left) borders.left = step.width;
  if (right) borders.right = step.width;
  return borders;
}

void Growth::movePosition(cv::Point& position, cv::Size step) const {
  if (left) Move(position.x, step.width);
  if (top) Move(position.y, step.height);
}

void Growth::moveBox(cv::Point& boxMin, cv::Point& boxMax, cv::Size step) const {
  if (top && right) {
    // At this corner alone the box's minimum moves twice and its maximum stays.
    Move(boxMin.y, 2 * std::int64_t{step.height});
  } else {
    movePosition(boxMin, step);
    movePosition(boxMax, step);
  }
}

Growth GrowthFor(std::int64_t x, std::int64_t y, cv::Size frame, cv::Size mosaic) {
  Growth growth;
  growth.top = y <= 0;
  growth.bottom = !growth.top && y + frame.height >= mosaic.height;
  growth.left = x <= 0;
  growth.right = !growth.left && x + frame.width >= mosaic.width;
  return growth;
}

}  // namespace jqstitching

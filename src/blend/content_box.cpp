#include <cstdint>

#include "jqstitchingalgorithm.h"

namespace {

// Widens [low, high) towards the side on which [start, start + length) sticks out.
// A frame that starts at `low` and ends beyond `high`, or sticks out on both sides,
// changes nothing.
void Widen(int& low, int& high, int start, int length) {
  const std::int64_t end = std::int64_t{start} + length;
  if (start >= low && end <= high) return;
  if (start < low && end < high) {
    low = start;
  } else if (start > low && end > high) {
    high = static_cast<int>(end);
  }
}

}  // namespace

void JQStitchingAlgorithm::outputImageCoordate(cv::Point boxMin, cv::Point boxMax, int, int,
                                               int frameRows, int frameCols, cv::Point position,
                                               cv::Point& newBoxMin, cv::Point& newBoxMax) {
  Widen(boxMin.x, boxMax.x, position.x, frameCols);
  Widen(boxMin.y, boxMax.y, position.y, frameRows);
  newBoxMin = boxMin;
  newBoxMax = boxMax;
}

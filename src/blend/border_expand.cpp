#include <opencv2/imgproc.hpp>

#include "engine/picture_check.h"
#include "jqstitchingalgorithm.h"

namespace {

// Coordinates far outside the mosaic wrap; the placement that follows refuses them.
void Move(int& coordinate, std::int64_t by) {
  coordinate = static_cast<int>(coordinate + by);
}

void Move(cv::Point& point, int byX, int byY) {
  Move(point.x, byX);
  Move(point.y, byY);
}

}  // namespace

void JQStitchingAlgorithm::BorderExpand(cv::Mat mosaic, int growRows, int growCols, int offsetX,
                                        int offsetY, int frameRows, int frameCols, int mosaicCols,
                                        int mosaicRows, cv::Point position, cv::Mat& grown,
                                        cv::Point& newPosition, cv::Point boxMin, cv::Point boxMax,
                                        cv::Point& newBoxMin, cv::Point& newBoxMax) {
  jqstitching::CheckPicture(mosaic);
  const std::int64_t x = std::int64_t{position.x} + offsetX;
  const std::int64_t y = std::int64_t{position.y} + offsetY;
  // Touching an edge counts as crossing it.
  const bool top = y <= 0;
  const bool bottom = !top && y + frameRows >= mosaicRows;
  const bool left = x <= 0;
  const bool right = !left && x + frameCols >= mosaicCols;

  if (top || bottom || left || right) {
    cv::copyMakeBorder(mosaic, mosaic, top ? growRows : 0, bottom ? growRows : 0,
                       left ? growCols : 0, right ? growCols : 0, cv::BORDER_CONSTANT,
                       cv::Scalar(0, 0, 0, 0));
  }
  const int movedX = left ? growCols : 0;
  const int movedY = top ? growRows : 0;
  Move(position, movedX, movedY);
  if (top && right) {
    // At this corner alone the box's minimum moves twice and its maximum stays.
    Move(boxMin.y, 2 * std::int64_t{growRows});
  } else {
    Move(boxMin, movedX, movedY);
    Move(boxMax, movedX, movedY);
  }
  grown = mosaic;
  newPosition = position;
  newBoxMin = boxMin;
  newBoxMax = boxMax;
}

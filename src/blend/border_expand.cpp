#include <opencv2/imgproc.hpp>

#include "blend/growth.h"
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
  const jqstitching::Growth growth =
      jqstitching::GrowthFor(x, y, {frameCols, frameRows}, {mosaicCols, mosaicRows});

  if (growth.any()) {
    cv::copyMakeBorder(mosaic, mosaic, growth.top ? growRows : 0, growth.bottom ? growRows : 0,
                       growth.left ? growCols : 0, growth.right ? growCols : 0, cv::BORDER_CONSTANT,
                       cv::Scalar(0, 0, 0, 0));
  }
  const int movedX = growth.left ? growCols : 0;
  const int movedY = growth.top ? growRows : 0;
  Move(position, movedX, movedY);
  if (growth.top && growth.right) {
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

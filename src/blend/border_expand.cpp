#include "blend/growth.h"
#include "engine/picture_check.h"
#include "jqstitchingalgorithm.h"

void JQStitchingAlgorithm::BorderExpand(cv::Mat mosaic, int growRows, int growCols, int offsetX,
                                        int offsetY, int frameRows, int frameCols, int mosaicCols,
                                        int mosaicRows, cv::Point position, cv::Mat& grown,
                                        cv::Point& newPosition, cv::Point boxMin, cv::Point boxMax,
                                        cv::Point& newBoxMin, cv::Point& newBoxMax) {
  jqstitching::CheckPicture(mosaic);
  const jqstitching::Growth growth =
      jqstitching::GrowthFor(std::int64_t{position.x} + offsetX, std::int64_t{position.y} + offsetY,
                             cv::Size(frameCols, frameRows), cv::Size(mosaicCols, mosaicRows));
  const cv::Size step(growCols, growRows);
  jqstitching::AddBorders(mosaic, growth.borders(step), 1);
  growth.movePosition(position, step);
  growth.moveBox(boxMin, boxMax, step);
  grown = mosaic;
  newPosition = position;
  newBoxMin = boxMin;
  newBoxMax = boxMax;
}

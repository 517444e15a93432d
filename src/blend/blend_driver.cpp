#include <opencv2/imgproc.hpp>

#include "jqstitchingalgorithm.h"
#include "registration/detect_level.h"

void JQStitchingAlgorithm::StitchingImage_imageblend(
    cv::Mat mosaic, cv::Mat frame, stitchflags flags, cv::Point mosaicMin, cv::Point mosaicMax,
    cv::Point, cv::Point& newMosaicMin, cv::Point& newMosaicMax, cv::Point& newPosition,
    cv::Mat& newMosaic, cv::Mat& blendRegion) {
  jqstitching::CheckDetectLevel(m_nDetectLevel);
  if (m_nDetectLevel != 1) {
    cv::resize(frame, frame, cv::Size(frame.cols / m_nDetectLevel, frame.rows / m_nDetectLevel),
               1.0, 0.0, cv::INTER_LINEAR);
  }

  cv::Point position(flags.positionX, flags.positionY);
  BorderExpand(mosaic, frame.rows, frame.cols, flags.offsetX, flags.offsetY, frame.rows, frame.cols,
               mosaic.cols, mosaic.rows, position, mosaic, position, mosaicMin, mosaicMax,
               mosaicMin, mosaicMax);
  position += cv::Point(flags.offsetX, flags.offsetY);

  // Nothing of the caller's changes before this point, and after the fusion
  // nothing can fail.
  cv::Mat block = mosaic(cv::Range(position.y, position.y + frame.rows),
                         cv::Range(position.x, position.x + frame.cols));
  cv::Mat fused;
  TwoImageFusion(block, frame, fused);
  fused.copyTo(block);
  outputImageCoordate(mosaicMin, mosaicMax, 0, 0, frame.rows, frame.cols, position, mosaicMin,
                      mosaicMax);

  blendRegion = fused;
  newMosaicMin = mosaicMin;
  newMosaicMax = mosaicMax;
  newPosition = position;
  newMosaic = mosaic;
}

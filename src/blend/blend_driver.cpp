#include <opencv2/imgproc.hpp>

#include "blend/kernels/fusion.h"
#include "engine/detect_level.h"
#include "engine/picture_check.h"
#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"

namespace {

// The block of the mosaic that a frame at (x, y) covers.
cv::Mat CoveredBlock(const cv::Mat& mosaic, std::int64_t x, std::int64_t y, const cv::Mat& frame) {
  if (x < 0 || y < 0 || x + frame.cols > mosaic.cols || y + frame.rows > mosaic.rows) {
    CV_Error(cv::Error::StsOutOfRange,
             cv::format("a frame of %d x %d at column %lld, row %lld lies outside the mosaic of "
                        "%d x %d",
                        frame.cols, frame.rows, static_cast<long long>(x),
                        static_cast<long long>(y), mosaic.cols, mosaic.rows));
  }
  return mosaic(cv::Rect(static_cast<int>(x), static_cast<int>(y), frame.cols, frame.rows));
}

}  // namespace

void JQStitchingAlgorithm::StitchingImage_imageblend(
    cv::Mat mosaic, cv::Mat frame, stitchflags flags, cv::Point mosaicMin, cv::Point mosaicMax,
    cv::Point, cv::Point& newMosaicMin, cv::Point& newMosaicMax, cv::Point& newPosition,
    cv::Mat& newMosaic, cv::Mat& blendRegion) {
  jqstitching::CheckDetectLevel(m_nDetectLevel);
  jqstitching::CheckPictures(mosaic, frame);
  if (m_nDetectLevel != 1) {
    cv::resize(frame, frame, cv::Size(frame.cols / m_nDetectLevel, frame.rows / m_nDetectLevel),
               1.0, 0.0, cv::INTER_LINEAR);
  }

  cv::Point position(flags.positionX, flags.positionY);
  BorderExpand(mosaic, frame.rows, frame.cols, flags.offsetX, flags.offsetY, frame.rows, frame.cols,
               mosaic.cols, mosaic.rows, position, mosaic, position, mosaicMin, mosaicMax,
               mosaicMin, mosaicMax);
  cv::Mat block = CoveredBlock(mosaic, std::int64_t{position.x} + flags.offsetX,
                               std::int64_t{position.y} + flags.offsetY, frame);
  position += cv::Point(flags.offsetX, flags.offsetY);

  // Nothing of the caller's changes before the pixels do, and nothing fails after.
  jqstitching::FuseImages(block, frame, true, m_workspace.get().fusion);
  outputImageCoordate(mosaicMin, mosaicMax, 0, 0, frame.rows, frame.cols, position, mosaicMin,
                      mosaicMax);

  blendRegion = frame;
  newMosaicMin = mosaicMin;
  newMosaicMax = mosaicMax;
  newPosition = position;
  newMosaic = mosaic;
}

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "reference/algorithm.h"

namespace reference {
namespace {

// One axis of the content box: the frame covers [a, b).
void Widen(int a, int b, int& boxMin, int& boxMax) {
  if (a >= boxMin && b <= boxMax) return;
  if (a < boxMin && b < boxMax) {
    boxMin = a;
  } else if (a > boxMin) {
    boxMax = std::max(b, boxMax);
  }
}

}  // namespace

void Algorithm::StitchingImage_imageblend(cv::Mat mosaic, cv::Mat frame, stitchflags flags,
                                          cv::Point mosaicMin, cv::Point mosaicMax,
                                          cv::Point /*reserved*/, cv::Point& newMosaicMin,
                                          cv::Point& newMosaicMax, cv::Point& newPosition,
                                          cv::Mat& newMosaic, cv::Mat& blendRegion) {
  if (m_nDetectLevel < 1) {
    CV_Error(cv::Error::StsOutOfRange, "the detection level is below 1");
  }
  if (m_nDetectLevel != 1) {
    const cv::Size size(frame.cols / m_nDetectLevel, frame.rows / m_nDetectLevel);
    cv::resize(frame, frame, size, 1.0, 0.0, cv::INTER_LINEAR);
  }
  const int w = frame.cols;
  const int h = frame.rows;

  cv::Point position;
  BorderExpand(mosaic, h, w, flags.offsetX, flags.offsetY, h, w, mosaic.cols, mosaic.rows,
               cv::Point(flags.positionX, flags.positionY), mosaic, position, mosaicMin, mosaicMax,
               mosaicMin, mosaicMax);

  const int x = position.x + flags.offsetX;
  const int y = position.y + flags.offsetY;
  cv::Mat covered = mosaic.rowRange(y, y + h).colRange(x, x + w);
  cv::Mat block;
  covered.copyTo(block);
  TwoImageFusion(block, frame, block);
  block.copyTo(covered);

  cv::Point boxMin = mosaicMin;
  cv::Point boxMax = mosaicMax;
  outputImageCoordate(mosaicMin, mosaicMax, 0, 0, h, w, cv::Point(x, y), boxMin, boxMax);

  newMosaicMin = boxMin;
  newMosaicMax = boxMax;
  newPosition = cv::Point(x, y);
  newMosaic = mosaic;
  blendRegion = block;
}

void Algorithm::BorderExpand(cv::Mat mosaic, int growRows, int growCols, int offsetX, int offsetY,
                             int frameRows, int frameCols, int mosaicCols, int mosaicRows,
                             cv::Point position, cv::Mat& grown, cv::Point& newPosition,
                             cv::Point boxMin, cv::Point boxMax, cv::Point& newBoxMin,
                             cv::Point& newBoxMax) {
  const int x = position.x + offsetX;
  const int y = position.y + offsetY;
  int top = 0;
  int bottom = 0;
  int left = 0;
  int right = 0;
  if (y <= 0) {
    top = growRows;
  } else if (y + frameRows >= mosaicRows) {
    bottom = growRows;
  }
  if (x <= 0) {
    left = growCols;
  } else if (x + frameCols >= mosaicCols) {
    right = growCols;
  }
  const cv::Point move(left, top);
  cv::Point minMove = move;
  cv::Point maxMove = move;
  // At the top-right corner the box does not move along with the picture.
  if (y <= 0 && !(x <= 0) && x + frameCols >= mosaicCols) {
    minMove = cv::Point(0, 2 * growRows);
    maxMove = cv::Point(0, 0);
  }
  const bool grows = y <= 0 || y + frameRows >= mosaicRows || x <= 0 || x + frameCols >= mosaicCols;
  if (grows) {
    cv::copyMakeBorder(mosaic, mosaic, top, bottom, left, right, cv::BORDER_CONSTANT,
                       cv::Scalar(0, 0, 0, 0));
  }
  grown = mosaic;
  newPosition = position + move;
  newBoxMin = boxMin + minMove;
  newBoxMax = boxMax + maxMove;
}

void Algorithm::outputImageCoordate(cv::Point boxMin, cv::Point boxMax, int /*ignored1*/,
                                    int /*ignored2*/, int frameRows, int frameCols,
                                    cv::Point position, cv::Point& newBoxMin,
                                    cv::Point& newBoxMax) {
  Widen(position.x, position.x + frameCols, boxMin.x, boxMax.x);
  Widen(position.y, position.y + frameRows, boxMin.y, boxMax.y);
  newBoxMin = boxMin;
  newBoxMax = boxMax;
}

}  // namespace reference

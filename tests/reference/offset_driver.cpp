#include <opencv2/imgproc.hpp>

#include "reference/algorithm.h"

namespace reference {

void Algorithm::StitchingImage_offset(int frameIndex, cv::Mat refImage, cv::Mat prevImage,
                                      cv::Mat curImage, cv::Point& minPoint, cv::Point& maxPoint,
                                      cv::Mat& mosaicImage, stitchflags& flags) {
  if (m_nDetectLevel < 1) {
    CV_Error(cv::Error::StsOutOfRange, "the detection level is below 1");
  }
  if (m_nDetectLevel != 1) {
    const cv::Size size(curImage.cols / m_nDetectLevel, curImage.rows / m_nDetectLevel);
    cv::resize(curImage, curImage, size, 0, 0, cv::INTER_LINEAR);
    cv::resize(prevImage, prevImage, size, 0, 0, cv::INTER_LINEAR);
    cv::resize(refImage, refImage, size, 0, 0, cv::INTER_LINEAR);
  }

  // The caller's outputs are written last, so that a failure leaves them alone.
  cv::Point newMin = minPoint;
  cv::Point newMax = maxPoint;
  cv::Mat canvas = mosaicImage;
  stitchflags record = flags;

  if (frameIndex == 0) {
    const int rows = refImage.rows;
    const int cols = refImage.cols;
    m_nImageRows = rows;
    m_nImageCols = cols;
    record.positionX = cols - cols / 2;
    record.positionY = rows - rows / 2;
    newMin = cv::Point(record.positionX, record.positionY);
    newMax = cv::Point(cols + record.positionX, rows + record.positionY);
    const int type = refImage.channels() == 1 ? CV_8UC1 : CV_8UC3;
    // Built apart: assigned at once, it would fill the caller's old canvas.
    canvas = cv::Mat(cv::Mat::zeros(2 * rows, 2 * cols, type));
    cv::Mat middle = canvas.rowRange(record.positionY, record.positionY + rows)
                         .colRange(record.positionX, record.positionX + cols);
    refImage.copyTo(middle);
  }

  if (m_nOverlapMode == 0) {
    m_fBrightThreshold = m_nUsePresets != 0 ? m_fBrightPreset : 128.0f;
    m_fDefinitionThreshold = m_nUsePresets != 0 ? m_fDefinitionPreset : 128.0f;
    cv::Mat mosaicPart;
    cv::Mat framePart;
    TakeOutOverLapImageFromMoasicImage(cv::Point(record.positionX, record.positionY),
                                       record.offsetX, record.offsetY, canvas, curImage, mosaicPart,
                                       framePart);
    CalacOverLapImageFlages(record.offsetX, record.offsetY, curImage.rows, curImage.cols,
                            mosaicPart, framePart, record.overlapFlag);
  } else {
    m_nFlagThreshold = m_nUsePresets != 0 ? m_nFlagPreset : 255;
    const int motion = ImageMotionModel(prevImage, curImage);
    record.overlapFlag = motion < m_nFlagThreshold ? 1 : 0;
  }

  ImageMosaicFun(refImage, curImage, record.offsetX, record.offsetY, record.matchCount);

  minPoint = newMin;
  maxPoint = newMax;
  mosaicImage = canvas;
  flags = record;
}

}  // namespace reference

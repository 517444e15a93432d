#include <opencv2/imgproc.hpp>

#include "jqstitchingalgorithm.h"
#include "registration/detect_level.h"

void JQStitchingAlgorithm::StitchingImage_offset(int frameIndex, cv::Mat refImage,
                                                 cv::Mat prevImage, cv::Mat curImage,
                                                 cv::Point& minPoint, cv::Point& maxPoint,
                                                 cv::Mat& mosaicImage, stitchflags& flags) {
  jqstitching::CheckDetectLevel(m_nDetectLevel);
  if (m_nDetectLevel != 1) {
    // The new frame's size is the target for all three.
    const cv::Size size(curImage.cols / m_nDetectLevel, curImage.rows / m_nDetectLevel);
    for (cv::Mat* image : {&curImage, &prevImage, &refImage}) {
      cv::resize(*image, *image, size, 0, 0, cv::INTER_LINEAR);
    }
  }

  // What the caller holds is written last, so that a failure leaves it alone.
  stitchflags record = flags;
  cv::Point boxMin = minPoint, boxMax = maxPoint;
  cv::Mat mosaic = mosaicImage;

  if (frameIndex == 0) {
    const int rows = refImage.rows, cols = refImage.cols;
    // An odd size puts the frame one pixel further right or down.
    const cv::Point position(cols - cols / 2, rows - rows / 2);
    cv::Mat canvas =
        cv::Mat::zeros(2 * rows, 2 * cols, refImage.channels() == 1 ? CV_8UC1 : CV_8UC3);
    refImage.copyTo(canvas(cv::Rect(position, refImage.size())));
    m_nImageRows = rows;
    m_nImageCols = cols;
    record.positionX = position.x;
    record.positionY = position.y;
    boxMin = position;
    boxMax = position + cv::Point(cols, rows);
    mosaic = canvas;
  }

  if (m_nOverlapMode == 0) {
    m_fBrightThreshold = m_nUsePresets != 0 ? m_fBrightPreset : 128.0f;
    m_fDefinitionThreshold = m_nUsePresets != 0 ? m_fDefinitionPreset : 128.0f;
    // The offset of the previous call: the new frame is registered afterwards.
    cv::Mat mosaicPart, framePart;
    TakeOutOverLapImageFromMoasicImage(cv::Point(record.positionX, record.positionY),
                                       record.offsetX, record.offsetY, mosaic, curImage, mosaicPart,
                                       framePart);
    CalacOverLapImageFlages(record.offsetX, record.offsetY, curImage.rows, curImage.cols,
                            mosaicPart, framePart, record.overlapFlag);
  } else {
    m_nFlagThreshold = m_nUsePresets != 0 ? m_nFlagPreset : 255;
    record.overlapFlag = ImageMotionModel(prevImage, curImage) < m_nFlagThreshold ? 1 : 0;
  }

  ImageMosaicFun(refImage, curImage, record.offsetX, record.offsetY, record.matchCount);

  minPoint = boxMin;
  maxPoint = boxMax;
  mosaicImage = mosaic;
  flags = record;
}

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

  if (frameIndex == 0) {
    const int rows = refImage.rows, cols = refImage.cols;
    // An odd size puts the frame one pixel further right or down.
    const cv::Point position(cols - cols / 2, rows - rows / 2);
    cv::Mat canvas =
        cv::Mat::zeros(2 * rows, 2 * cols, refImage.channels() == 1 ? CV_8UC1 : CV_8UC3);
    refImage.copyTo(canvas(cv::Rect(position, refImage.size())));
    m_nImageRows = rows;
    m_nImageCols = cols;
    flags.positionX = position.x;
    flags.positionY = position.y;
    minPoint = position;
    maxPoint = position + cv::Point(cols, rows);
    mosaicImage = canvas;
  }

  if (m_nOverlapMode == 0) {
    m_fBrightThreshold = m_nUsePresets != 0 ? m_fBrightPreset : 128.0f;
    m_fDefinitionThreshold = m_nUsePresets != 0 ? m_fDefinitionPreset : 128.0f;
    // The offset of the previous call: the new frame is registered afterwards.
    cv::Mat mosaicPart, framePart;
    TakeOutOverLapImageFromMoasicImage(cv::Point(flags.positionX, flags.positionY), flags.offsetX,
                                       flags.offsetY, mosaicImage, curImage, mosaicPart, framePart);
    CalacOverLapImageFlages(flags.offsetX, flags.offsetY, curImage.rows, curImage.cols, mosaicPart,
                            framePart, flags.overlapFlag);
  } else {
    m_nFlagThreshold = m_nUsePresets != 0 ? m_nFlagPreset : 255;
    flags.overlapFlag = ImageMotionModel(prevImage, curImage) < m_nFlagThreshold ? 1 : 0;
  }

  ImageMosaicFun(refImage, curImage, flags.offsetX, flags.offsetY, flags.matchCount);
}

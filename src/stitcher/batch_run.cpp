#include <opencv2/imgcodecs.hpp>
#include <string>

#include "jqimageconvert.h"
#include "picture/library_rounding.h"
#include "stitcher/run_state.h"

namespace {

cv::Mat ReadFrame(const QString& path) {
  const std::string local = path.toLocal8Bit().constData();
  return cv::imread(local, cv::IMREAD_COLOR);
}

}  // namespace

void JQImageStitching::slotStartStitching() {
  m_pRun->stopRequested = false;
  if (!IsImageSizeMatched(m_fileList)) {
    Q_EMIT sglMultiImageProcessFinished(nullptr);
    return;
  }
  jqstitching::PrepareRounding();
  const QString count = QString::number(m_fileList.size());
  m_pRun->expectFrame();
  m_pRun->undo.clear();
  RunState::startRun(*this);
  m_pAlgorithm->SetParameter(1, 8, 0, 0);
  m_curFrame = ReadFrame(m_fileList[0]);
  m_pAlgorithm->JudgeImageChannel(m_curFrame, m_curFrame);
  RunState::takeFirstFrame(*this);
  Q_EMIT sglMultiImageProcessStatus(QObject::tr("Image Stitching 1/") + count);

  // The previous frame stays the first file throughout, and a blend leaves the
  // record's offset as it is: both differ from the live run.
  for (int i = 1; i < m_fileList.size() && !m_pRun->stopRequested; ++i) {
    m_pRun->expectFrame();
    cv::Mat newFrame = ReadFrame(m_fileList[i]);
    if (RunState::takeFrame(*this, newFrame)) ++m_nFrameCount;
    Q_EMIT sglMultiImageProcessStatus(QObject::tr("Image Stitching ") + QString::number(i + 1) +
                                      "/" + count);
  }

  if (m_pRun->stopRequested && m_nFrameCount == 0) {
    // Stopped after the first file: the mosaic is an earlier run's or none.
    m_curFrame.release();
  } else {
    RunState::trim(*this);
  }
  Q_EMIT sglMultiImageProcessFinished(&m_curFrame);
}

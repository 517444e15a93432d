#include <opencv2/imgcodecs.hpp>
#include <string>

#include "jqimageconvert.h"
#include "stitcher/run_state.h"

namespace {

cv::Mat ReadFrame(const QString& path) {
  const std::string local = path.toLocal8Bit().constData();
  return cv::imread(local, cv::IMREAD_COLOR);
}

}  // namespace

void JQImageStitching::slotStartStitching() {
  if (!IsImageSizeMatched(m_fileList)) {
    emit sglMultiImageProcessFinished(nullptr);
    return;
  }
  const QString count = QString::number(m_fileList.size());
  m_nFrameCount = 0;
  m_nReserved = 0;
  m_fMinOverlap = 0.1f;
  m_fMaxOverlap = 0.9f;
  m_pAlgorithm->SetParameter(1, 8, 0, 0);
  m_curFrame = ReadFrame(m_fileList[0]);
  m_pAlgorithm->JudgeImageChannel(m_curFrame, m_curFrame);
  m_refFrame = m_curFrame;
  m_pRun->lastFramePlaced = true;
  m_pRun->referenceId = 0;
  m_pRun->placedBounds = cv::Rect();
  emit sglMultiImageProcessStatus(QObject::tr("Image Stitching 1/") + count);

  // The previous frame stays the first file throughout, and a blend leaves the
  // record's offset as it is: both differ from the live run.
  for (int i = 1; i < m_fileList.size(); ++i) {
    cv::Mat newFrame = ReadFrame(m_fileList[i]);
    bool accepted = false;
    RunState::takeFrame(*this, newFrame, accepted);
    if (accepted) ++m_nFrameCount;
    m_pRun->lastFramePlaced = accepted;
    emit sglMultiImageProcessStatus(QObject::tr("Image Stitching ") + QString::number(i + 1) + "/" +
                                    count);
  }

  RunState::trim(*this);
  emit sglMultiImageProcessFinished(&m_curFrame);
}

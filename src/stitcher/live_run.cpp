#include <memory>
#include <utility>

#include "jqglobalclass.h"
#include "jqimageconvert.h"
#include "stitcher/output_record.h"
#include "stitcher/run_state.h"

_tagJQIMG* JQImageStitching::Stitching(_tagJQIMG* img, int nOverlapMode, int nDetectLevel,
                                       int nCornerBudget) {
  if (img == nullptr) return nullptr;

  if (m_pOutImage == nullptr && m_curFrame.empty() && m_resultMat.empty()) {
    // Whatever can fail comes first: a bad first record leaves the stitcher idle.
    cv::Mat frame;
    ConvertJQImgToCv8UC3(img, frame);
    auto record = std::make_unique<_tagJQIMG>();
    m_nOverlapMode = nOverlapMode;
    m_nStitchState = 1;
    m_pAlgorithm->SetParameter(nDetectLevel, nCornerBudget, nOverlapMode, 1);
    m_pAlgorithm->JudgeImageChannel(frame, m_curFrame);
    m_pOutImage = record.release();
    jqstitching::FillRecord(*m_pOutImage, *img, m_curFrame);
    m_bStitchStarted = true;
    m_nFrameCount = 0;
    m_nReserved = 0;
    m_refFrame = m_curFrame;
    m_fMinOverlap = 0.1f;
    m_fMaxOverlap = 0.9f;
    m_pRun->lastFramePlaced = true;
    m_pRun->referenceId = 0;
    m_pRun->placedBounds = cv::Rect();
    return m_pOutImage;
  }

  // Only a host that mixed a live run with canvas operations or a batch run gets
  // here without a record.
  if (m_pOutImage == nullptr) {
    CV_Error(cv::Error::StsInternal,
             "a live run cannot start on a stitcher that holds a canvas or a batch run");
  }
  cv::Mat newFrame = m_pRun->takeSpare();
  ConvertJQImgToCv8UC3(img, newFrame);
  cv::Mat oldReference = m_refFrame;
  bool accepted = false;
  bool judged = false;
  try {
    judged = RunState::takeFrame(*this, newFrame, accepted);
  } catch (...) {
    // A picture that the host has trimmed in mid-run stands where the motion test
    // looks for the previous frame; without this every later call would fail too.
    if (newFrame.size() == m_refFrame.size() && m_curFrame.size() != newFrame.size()) {
      m_curFrame = newFrame;
    }
    throw;
  }
  if (judged) m_bLastFrameAccepted = accepted;
  if (accepted) {
    // The next overlap test looks where this frame was placed.
    m_pAlgorithm->m_stitchFlags.offsetX = 0;
    m_pAlgorithm->m_stitchFlags.offsetY = 0;
    ++m_nFrameCount;
  }
  m_pRun->lastFramePlaced = accepted;
  std::swap(m_curFrame, newFrame);
  m_pRun->recycle(newFrame);
  m_pRun->recycle(oldReference);
  jqstitching::FillRecord(*m_pOutImage, *img, m_mosaic);
  return m_pOutImage;
}

#include <memory>

#include "jqglobalclass.h"
#include "jqimageconvert.h"
#include "picture/library_rounding.h"
#include "stitcher/frame_pool.h"
#include "stitcher/output_record.h"
#include "stitcher/run_state.h"

_tagJQIMG* JQImageStitching::Stitching(_tagJQIMG* img, int nOverlapMode, int nDetectLevel,
                                       int nCornerBudget) {
  if (img == nullptr) return nullptr;
  const JQFrameVerdict verdictBefore = m_pRun->verdict;
  m_pRun->expectFrame();

  if (m_pOutImage == nullptr && m_curFrame.empty() && m_resultMat.empty()) {
    // Whatever can fail comes first: a bad first record leaves the stitcher idle.
    cv::Mat frame = jqstitching::FramePool::Instance().newMatrix();
    ConvertJQImgToCv8UC3(img, frame);
    jqstitching::PrepareRounding();
    std::unique_ptr<_tagJQIMG>& record = m_pRun->spareRecord;
    if (!record) record = std::make_unique<_tagJQIMG>();
    RunState::setLive(*this, nOverlapMode, nDetectLevel, nCornerBudget);
    m_pAlgorithm->JudgeImageChannel(frame, m_curFrame);
    m_pOutImage = record.release();
    jqstitching::FillRecord(*m_pOutImage, *img, m_curFrame);
    m_bStitchStarted = true;
    RunState::startRun(*this);
    RunState::takeFirstFrame(*this);
    // At other levels the first frame is made smaller when the second comes.
    if (m_pAlgorithm->m_nDetectLevel == 1) RunState::describeReference(*this);
    return m_pOutImage;
  }

  // Only a host that mixed a live run with canvas operations or a batch run gets
  // here without a record.
  if (m_pOutImage == nullptr) {
    CV_Error(cv::Error::StsInternal,
             "a live run cannot start on a stitcher that holds a canvas or a batch run");
  }
  jqstitching::UndoHistory::Steps step = RunState::prepareUndo(*this);
  if (!step.empty()) step.front().before.verdict = verdictBefore;
  cv::Mat newFrame = jqstitching::FramePool::Instance().newMatrix();
  ConvertJQImgToCv8UC3(img, newFrame);
  bool accepted = false;
  try {
    accepted = RunState::takeFrame(*this, newFrame, step.empty() ? nullptr : &step.front());
  } catch (...) {
    // A picture that the host has trimmed in mid-run, or a frame of another size, stands
    // where the motion test looks for the previous frame. Where that is smaller than the
    // frames, every later call would fail as this one did.
    if (newFrame.size() == m_refFrame.size() && m_curFrame.size() != newFrame.size()) {
      m_curFrame = newFrame;
    }
    throw;
  }
  // A frame that the overlap or motion test turned down leaves the older answer.
  if (m_pAlgorithm->m_stitchFlags.overlapFlag == 1) m_bLastFrameAccepted = accepted;
  if (accepted) {
    // The next overlap test looks where this frame was placed.
    m_pAlgorithm->m_stitchFlags.offsetX = 0;
    m_pAlgorithm->m_stitchFlags.offsetY = 0;
    ++m_nFrameCount;
    m_pRun->undo.add(std::move(step));
  }
  m_curFrame = newFrame;
  jqstitching::FillRecord(*m_pOutImage, *img, m_mosaic);
  return m_pOutImage;
}

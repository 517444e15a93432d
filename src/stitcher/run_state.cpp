#include "stitcher/run_state.h"

void JQImageStitching::RunState::expectFrame() {
  verdict = JQFrameVerdict();
  verdict.cause = JQFrameCause::kCallFailed;
}

void JQImageStitching::RunState::expectMosaic(std::int64_t cols, std::int64_t rows, int channels) {
  verdict.mosaicBytesNeeded = cols * rows * channels;
  if (memoryLimit > 0 && verdict.mosaicBytesNeeded > memoryLimit) {
    CV_Error(cv::Error::StsNoMem, cv::format("the mosaic would need %lld bytes, %lld are allowed",
                                             static_cast<long long>(verdict.mosaicBytesNeeded),
                                             static_cast<long long>(memoryLimit)));
  }
}

void JQImageStitching::RunState::setLive(JQImageStitching& stitcher, int overlapMode,
                                         int detectLevel, int cornerBudget) {
  stitcher.m_nOverlapMode = overlapMode;
  stitcher.m_nStitchState = 1;
  stitcher.m_pAlgorithm->SetParameter(detectLevel, cornerBudget, overlapMode, 1);
}

void JQImageStitching::RunState::startRun(JQImageStitching& stitcher) {
  stitcher.m_nFrameCount = 0;
  stitcher.m_nReserved = 0;
  stitcher.m_fMinOverlap = JQFrameVerdict::kLeastOverlap;
  stitcher.m_fMaxOverlap = JQFrameVerdict::kMostOverlap;
}

void JQImageStitching::RunState::takeFirstFrame(JQImageStitching& stitcher) {
  stitcher.m_refFrame = stitcher.m_curFrame;
  RunState& run = *stitcher.m_pRun;
  run.verdict = JQFrameVerdict();
  run.verdict.cause = JQFrameCause::kFirstFrame;
  run.referenceId = 0;
  run.placedBounds = cv::Rect();
}

void JQImageStitching::RunState::exposeCurrentFrame(JQImageStitching& stitcher) {
  if (stitcher.m_curFrame.data == stitcher.m_refFrame.data) {
    stitcher.m_pRun->referenceId = 0;
  }
}

#include "stitcher/run_state.h"

void JQImageStitching::RunState::expectFrame() {
  verdict = JQFrameVerdict();
  verdict.cause = JQFrameCause::kCallFailed;
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

#include "stitcher/output_record.h"
#include "stitcher/run_state.h"

JQStitchingMoment JQImageStitching::RunState::momentOf(const JQImageStitching& stitcher) {
  JQStitchingMoment moment;
  moment.reference = stitcher.m_refFrame;
  moment.current = stitcher.m_curFrame;
  moment.contentMin = stitcher.m_mosaicMin;
  moment.contentMax = stitcher.m_mosaicMax;
  moment.placedBounds = stitcher.m_pRun->placedBounds;
  moment.record = stitcher.m_pAlgorithm->m_stitchFlags;
  moment.verdict = stitcher.m_pRun->verdict;
  moment.frameCount = stitcher.m_nFrameCount;
  moment.lastFrameAccepted = stitcher.m_bLastFrameAccepted;
  return moment;
}

void JQImageStitching::RunState::returnTo(JQImageStitching& stitcher,
                                          const JQStitchingMoment& moment) {
  RunState& run = *stitcher.m_pRun;
  stitcher.m_refFrame = moment.reference;
  stitcher.m_curFrame = moment.current;
  stitcher.m_mosaicMin = moment.contentMin;
  stitcher.m_mosaicMax = moment.contentMax;
  run.placedBounds = moment.placedBounds;
  stitcher.m_pAlgorithm->m_stitchFlags = moment.record;
  run.verdict = moment.verdict;
  stitcher.m_nFrameCount = moment.frameCount;
  stitcher.m_bLastFrameAccepted = moment.lastFrameAccepted;
  // The host may have been handed these pixels before.
  run.referenceId = 0;
}

void JQImageStitching::RunState::showRun(JQImageStitching& stitcher) {
  const bool hasMosaic = !stitcher.m_mosaic.empty();
  if (!hasMosaic) exposeCurrentFrame(stitcher);
  _tagJQIMG& record = *stitcher.m_pOutImage;
  jqstitching::FillRecord(record, record, hasMosaic ? stitcher.m_mosaic : stitcher.m_curFrame);
}

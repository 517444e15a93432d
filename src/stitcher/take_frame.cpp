#include "engine/engine_access.h"
#include "overlap/offset_step.h"
#include "registration/registration_step.h"
#include "stitcher/acceptance.h"
#include "stitcher/run_state.h"

namespace {

// Everything that one frame may change. Mosaic and reference are headers: their
// pixels change only in the last, non-failing step of placing a frame. A mosaic that is
// there when the frame comes is not among it: where placing fails the engine leaves it, and
// a second header on its pixels would keep it from growing in place.
struct Snapshot {
  cv::Point mosaicMin, mosaicMax;
  cv::Mat mosaic, refFrame;
  stitchflags flags;
  cv::Rect placedBounds;
};

}  // namespace

bool JQImageStitching::RunState::takeFrame(JQImageStitching& stitcher, cv::Mat& newFrame) {
  stitchflags& flags = stitcher.m_pAlgorithm->m_stitchFlags;
  RunState& run = *stitcher.m_pRun;
  const bool startsMosaic = stitcher.m_nFrameCount == 0;
  const Snapshot before{stitcher.m_mosaicMin,
                        stitcher.m_mosaicMax,
                        startsMosaic ? stitcher.m_mosaic : cv::Mat(),
                        stitcher.m_refFrame,
                        flags,
                        run.placedBounds};
  try {
    JQStitchingAlgorithm& engine = *stitcher.m_pAlgorithm;
    const jqstitching::KnownOfFrames known{true, run.referenceId};
    const jqstitching::FrameMeasures measures = jqstitching::OffsetStep(
        engine, jqstitching::EngineAccess::workspace(engine), known, stitcher.m_nFrameCount,
        stitcher.m_refFrame, stitcher.m_curFrame, newFrame, stitcher.m_mosaicMin,
        stitcher.m_mosaicMax, stitcher.m_mosaic, flags);
    if (startsMosaic) run.placedBounds = cv::Rect(stitcher.m_mosaicMin, stitcher.m_mosaicMax);
    const JQFrameVerdict verdict = jqstitching::JudgeFrame(
        flags, measures, newFrame.size(), {stitcher.m_fMinOverlap, stitcher.m_fMaxOverlap});
    const bool accepted = verdict.cause == JQFrameCause::kPlaced;
    if (accepted) {
      place(stitcher, newFrame);
      prepareReference(stitcher);
    }
    if (startsMosaic) stitcher.m_nFrameCount = 1;
    run.verdict = verdict;
    return accepted;
  } catch (...) {
    stitcher.m_mosaicMin = before.mosaicMin;
    stitcher.m_mosaicMax = before.mosaicMax;
    if (startsMosaic) stitcher.m_mosaic = before.mosaic;
    stitcher.m_refFrame = before.refFrame;
    flags = before.flags;
    run.placedBounds = before.placedBounds;
    throw;
  }
}

void JQImageStitching::RunState::place(JQImageStitching& stitcher, cv::Mat& newFrame) {
  stitchflags& flags = stitcher.m_pAlgorithm->m_stitchFlags;
  RunState& run = *stitcher.m_pRun;
  const cv::Point old(flags.positionX, flags.positionY);
  const cv::Point expected = old + cv::Point(flags.offsetX, flags.offsetY);
  cv::Point position = old;
  stitcher.m_pAlgorithm->StitchingImage_imageblend(
      stitcher.m_mosaic, newFrame, flags, stitcher.m_mosaicMin, stitcher.m_mosaicMax, old,
      stitcher.m_mosaicMin, stitcher.m_mosaicMax, position, stitcher.m_mosaic, stitcher.m_refFrame);
  flags.positionX = position.x;
  flags.positionY = position.y;
  run.referenceId = ++run.m_references;
  // Growth at the top or left has moved everything by the difference. The new
  // reference is the fused block, so its size is the placed frame's.
  run.placedBounds =
      (run.placedBounds + (position - expected)) | cv::Rect(position, stitcher.m_refFrame.size());
}

void JQImageStitching::RunState::prepareReference(JQImageStitching& stitcher) {
  try {
    jqstitching::PrepareReference(*stitcher.m_pAlgorithm, stitcher.m_refFrame,
                                  stitcher.m_pRun->referenceId);
  } catch (...) {
    // The frame is placed. The next call looks for the features again, and tells
    // the host if it still cannot have the memory.
  }
}

#include "blend/growth.h"
#include "engine/detect_level.h"
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

// What the engine makes of a frame of this size.
cv::Size AtWorkingScale(const JQStitchingAlgorithm& engine, cv::Size frame) {
  const std::int32_t level = engine.m_nDetectLevel;
  jqstitching::CheckDetectLevel(level);
  return cv::Size(frame.width / level, frame.height / level);
}

}  // namespace

bool JQImageStitching::RunState::takeFrame(JQImageStitching& stitcher, cv::Mat& newFrame,
                                           JQStitchingUndoStep* step) {
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
    if (startsMosaic) {
      const cv::Size frame = AtWorkingScale(
          engine, engine.m_nDetectLevel == 1 ? stitcher.m_refFrame.size() : newFrame.size());
      run.expectMosaic(2 * std::int64_t{frame.width}, 2 * std::int64_t{frame.height},
                       stitcher.m_refFrame.channels());
    }
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
      place(stitcher, newFrame, step);
      newReference(stitcher);
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

void JQImageStitching::RunState::place(JQImageStitching& stitcher, cv::Mat& newFrame,
                                       JQStitchingUndoStep* step) {
  JQStitchingAlgorithm& engine = *stitcher.m_pAlgorithm;
  stitchflags& flags = engine.m_stitchFlags;
  RunState& run = *stitcher.m_pRun;
  const cv::Point old(flags.positionX, flags.positionY);
  const cv::Point expected = old + cv::Point(flags.offsetX, flags.offsetY);
  const cv::Rect frame(expected, AtWorkingScale(engine, newFrame.size()));
  const cv::Mat& mosaic = stitcher.m_mosaic;
  const jqstitching::Growth growth =
      jqstitching::GrowthFor(frame.x, frame.y, frame.size(), mosaic.size());
  if (growth.any()) {
    run.expectMosaic(std::int64_t{mosaic.cols} + (growth.left || growth.right ? frame.width : 0),
                     std::int64_t{mosaic.rows} + (growth.top || growth.bottom ? frame.height : 0),
                     mosaic.channels());
  }
  // Nothing is painted over in a mosaic that was not there before the call.
  if (step != nullptr && !step->mosaicSize.empty()) {
    step->covered = frame & cv::Rect(cv::Point(), mosaic.size());
    step->block = jqstitching::FramePool::Instance().newMatrix();
    mosaic(step->covered).copyTo(step->block);
  }

  cv::Point position = old;
  engine.StitchingImage_imageblend(
      mosaic, newFrame, flags, stitcher.m_mosaicMin, stitcher.m_mosaicMax, old,
      stitcher.m_mosaicMin, stitcher.m_mosaicMax, position, stitcher.m_mosaic, stitcher.m_refFrame);
  flags.positionX = position.x;
  flags.positionY = position.y;
  // Growth at the top or left has moved everything by the difference. The new
  // reference is the fused block, so its size is the placed frame's.
  const cv::Point moved = position - expected;
  if (step != nullptr) step->moved = moved;
  run.placedBounds = (run.placedBounds + moved) | cv::Rect(position, stitcher.m_refFrame.size());
}

void JQImageStitching::RunState::newReference(JQImageStitching& stitcher) {
  RunState& run = *stitcher.m_pRun;
  run.referenceId = ++run.m_references;
  describeReference(stitcher);
}

void JQImageStitching::RunState::describeReference(JQImageStitching& stitcher) {
  try {
    jqstitching::PrepareReference(*stitcher.m_pAlgorithm, stitcher.m_refFrame,
                                  stitcher.m_pRun->referenceId);
  } catch (...) {
    // The reference is in place. The next call looks for the features again, and tells
    // the host if it still cannot have the memory.
  }
}

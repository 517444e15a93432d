#include "stitcher/state_check.h"

#include <cstdlib>

namespace jqstitching {
namespace {

void Require(bool makesSense, const char* what) {
  if (!makesSense) CV_Error(cv::Error::StsBadArg, cv::format("the saved run: %s", what));
}

bool IsPicture(const cv::Mat& picture) {
  return picture.dims <= 2 && !picture.empty() && picture.type() == CV_8UC3;
}

// Whether the rectangle has pixels and lies inside; sums that wrap cannot pass.
bool LiesInside(const cv::Rect& rect, cv::Size size) {
  return rect.x >= 0 && rect.y >= 0 && rect.width > 0 && rect.height > 0 &&
         rect.width <= size.width && rect.height <= size.height &&
         rect.x <= size.width - rect.width && rect.y <= size.height - rect.height;
}

bool IsSmallerThan(std::int32_t offset, std::int32_t length) {
  return std::abs(std::int64_t{offset}) < length;
}

// `mosaic` is the mosaic's size at that moment, empty without one.
void CheckMoment(const JQStitchingMoment& moment, cv::Size mosaic) {
  Require(IsPicture(moment.reference), "the reference is not an 8-bit colour picture");
  Require(moment.current.empty() || IsPicture(moment.current),
          "the current picture is not an 8-bit colour picture");
  const stitchflags& record = moment.record;
  if (mosaic.empty()) {
    Require(moment.frameCount == 0, "frames are counted without a mosaic");
    Require(moment.placedBounds == cv::Rect(), "frames are placed without a mosaic");
  } else {
    // Far from where the next frames would count beyond the type.
    Require(moment.frameCount >= 1 && moment.frameCount <= (1 << 30),
            "the frame count does not go with a mosaic");
    Require(LiesInside(moment.placedBounds, mosaic), "the placed bounds leave the mosaic");
    Require(LiesInside(cv::Rect(record.positionX, record.positionY, 1, 1), mosaic),
            "the position leaves the mosaic");
  }
  const cv::Size reach = mosaic.empty() ? moment.reference.size() : mosaic;
  Require(IsSmallerThan(record.offsetX, reach.width) && IsSmallerThan(record.offsetY, reach.height),
          "the offset leaves the pictures");
  Require(moment.verdict.cause >= JQFrameCause::kNone &&
              moment.verdict.cause <= JQFrameCause::kShiftTooLarge,
          "the verdict's cause is unknown");
}

// `after` is the mosaic's size when the step had been taken.
void CheckStep(const JQStitchingUndoStep& step, cv::Size after) {
  CheckMoment(step.before, step.mosaicSize);
  if (step.mosaicSize.empty()) {
    Require(step.mosaicSize == cv::Size() && step.covered == cv::Rect() && step.block.empty(),
            "an undo step keeps pixels from before the mosaic");
    return;
  }
  Require(LiesInside(cv::Rect(step.moved, step.mosaicSize), after),
          "an undo step's mosaic does not lie inside the one that came after it");
  if (step.covered == cv::Rect()) {
    Require(step.block.empty(), "an undo step that paints over nothing keeps pixels");
    return;
  }
  Require(LiesInside(step.covered, step.mosaicSize), "an undo step's block leaves the mosaic");
  Require(IsPicture(step.block) && step.block.size() == step.covered.size(),
          "an undo step's block is not an 8-bit colour picture of its size");
}

void CheckIdle(const JQStitchingState& state) {
  Require(state.mosaic.empty() && state.now.reference.empty() && state.now.current.empty() &&
              state.undo.empty() && state.now.frameCount == 0 &&
              state.now.placedBounds == cv::Rect(),
          "pictures or frames of a run that was not started");
}

}  // namespace

void CheckState(const JQStitchingState& state) {
  Require(state.undoDepth >= 0 && state.undo.size() <= static_cast<size_t>(state.undoDepth),
          "more undo steps than the depth allows");
  if (!state.started) {
    CheckIdle(state);
    return;
  }
  const cv::Size size = state.mosaic.empty() ? cv::Size() : state.mosaic.size();
  CheckMoment(state.now, size);
  if (!state.mosaic.empty()) {
    Require(IsPicture(state.mosaic), "the mosaic is not an 8-bit colour picture");
    Require(state.detectLevel >= 1, "a mosaic at a level below 1");
    Require(LiesInside(cv::Rect(cv::Point(), state.frameSize), size),
            "the frame size does not go with the mosaic");
  }
  cv::Size after = size;
  for (auto step = state.undo.rbegin(); step != state.undo.rend(); ++step) {
    CheckStep(*step, after);
    after = step->mosaicSize;
  }
}

}  // namespace jqstitching

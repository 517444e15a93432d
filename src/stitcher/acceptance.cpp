#include "stitcher/acceptance.h"

#include <algorithm>
#include <cstdlib>

namespace jqstitching {
namespace {

// The larger component of the offset, and the frame's size along it.
struct DominantShift {
  float shift, extent;
};

DominantShift Dominant(const stitchflags& record, cv::Size frame) {
  const std::int64_t x = std::abs(std::int64_t{record.offsetX});
  const std::int64_t y = std::abs(std::int64_t{record.offsetY});
  // A tie is measured against the rows.
  return {static_cast<float>(std::max(x, y)),
          static_cast<float>(x > y ? frame.width : frame.height)};
}

JQFrameCause Cause(const stitchflags& record, const CornersFound& corners,
                   const DominantShift& dominant, const OverlapBounds& bounds) {
  const bool fit = record.overlapFlag == 1;
  const bool matched = EnoughMatches(record.matchCount);
  const bool farEnough = dominant.shift > (1.0f - bounds.most) * dominant.extent;
  const bool nearEnough = dominant.shift < (1.0f - bounds.least) * dominant.extent;
  // Asked first: in a batch run a frame without corners is placed by older numbers.
  if (fit && matched && farEnough && nearEnough) return JQFrameCause::kPlaced;
  if (!corners.second) return JQFrameCause::kNoCornersInFrame;
  if (!corners.first) return JQFrameCause::kNoCornersInReference;
  if (!fit) return JQFrameCause::kOverlapTestFailed;
  if (!matched) return JQFrameCause::kTooFewMatches;
  return farEnough ? JQFrameCause::kShiftTooLarge : JQFrameCause::kShiftTooSmall;
}

}  // namespace

bool EnoughMatches(std::int32_t matchCount) {
  return matchCount >= JQFrameVerdict::kMatchesNeeded;
}

JQFrameVerdict JudgeFrame(const stitchflags& record, const FrameMeasures& measures, cv::Size frame,
                          const OverlapBounds& bounds) {
  const DominantShift dominant = Dominant(record, frame);
  JQFrameVerdict verdict;
  verdict.cause = Cause(record, measures.corners, dominant, bounds);
  verdict.registered = measures.corners.first && measures.corners.second;
  if (verdict.registered) {
    verdict.matchCount = record.matchCount;
    verdict.pairCount = measures.corners.matched;
    verdict.offset = cv::Point(record.offsetX, record.offsetY);
    verdict.shiftShare = dominant.shift / dominant.extent;
  }
  verdict.brightness = measures.bright;
  verdict.brightnessLimit = measures.brightLimit;
  verdict.definition = measures.definition;
  verdict.definitionLimit = measures.definitionLimit;
  verdict.motion = measures.motion;
  verdict.motionLimit = measures.motionLimit;
  return verdict;
}

}  // namespace jqstitching

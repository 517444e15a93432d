#include "host/assemble/pair_grade.h"

#include <cstdlib>

#include "jqframeverdict.h"

namespace jqhost {
namespace {

bool HasEnoughMatches(const FramePair& pair) {
  return pair.matches >= JQFrameVerdict::kMatchesNeeded;
}

// In whole numbers, so that exactly 90 % is within.
bool OverlapsEnough(const FramePair& pair, cv::Size frame) {
  return 10 * std::abs(pair.shift.x) <= 9 * frame.width &&
         10 * std::abs(pair.shift.y) <= 9 * frame.height;
}

}  // namespace

LinkGrade GradePair(const FramePair& pair, cv::Size frame) {
  if (!pair.doubt) return LinkGrade::kWorthless;
  const bool withinBounds = HasEnoughMatches(pair) && OverlapsEnough(pair, frame);
  if (!pair.doubt->doubtful) return withinBounds ? LinkGrade::kSound : LinkGrade::kWeak;
  const bool leads = pair.doubt->agreement > pair.doubt->rival;
  const bool faint = pair.doubt->reason == DoubtReason::kUnsupported && leads;
  return faint && withinBounds ? LinkGrade::kWeak : LinkGrade::kDoubtful;
}

PairState WhyUnused(const FramePair& pair, cv::Size frame) {
  const DoubtReason reason = pair.doubt ? pair.doubt->reason : DoubtReason::kNone;
  if (reason == DoubtReason::kRepeats) return PairState::kRepeats;
  if (!HasEnoughMatches(pair)) return PairState::kTooFewMatches;
  if (reason == DoubtReason::kContradicted) return PairState::kContradicted;
  if (!OverlapsEnough(pair, frame)) return PairState::kShiftTooLarge;
  return PairState::kUnsupported;
}

}  // namespace jqhost

#include "words/frame_words.h"

#include <cmath>

#include "words/assembly_words.h"
#include "words/numbers.h"
#include "words/overlap_words.h"

using jqhost::Cause;
using jqhost::FrameResult;
using jqhost::RunRecord;
using jqhost::StitchSettings;

namespace jqstitch {
namespace {

std::string MatchesOfNeeded(const FrameResult& frame) {
  return std::to_string(frame.measured.matchCount) + " of " +
         std::to_string(JQFrameVerdict::kMatchesNeeded);
}

// The stitcher compares the shift at the working scale with the full frame.
std::string ShiftLimit(double share, const StitchSettings& settings) {
  return std::to_string(static_cast<int>(std::lround(100 * share * settings.detectLevel))) + " %";
}

std::string DoubtText(const jqhost::PlacementDoubt& doubt) {
  switch (doubt.reason) {
    case jqhost::DoubtReason::kContradicted:
      return "a shift of " + std::to_string(doubt.rivalShift.x) + ", " +
             std::to_string(doubt.rivalShift.y) + " would fit the frame before better";
    case jqhost::DoubtReason::kRepeats:
      if (doubt.period == cv::Point2d()) return "other shifts fit the frame before as well";
      return "the scene repeats itself every " +
             std::to_string(cvRound(std::hypot(doubt.period.x, doubt.period.y))) + " pixels";
    case jqhost::DoubtReason::kUnsupported:
      return "it is hardly like the frame before where they overlap";
    case jqhost::DoubtReason::kNone:
      break;
  }
  return std::string();
}

}  // namespace

std::string ReasonText(const RunRecord& record, const FrameResult& frame) {
  switch (frame.cause) {
    case Cause::kPlaced:
      return std::string();
    case Cause::kNoCorners:
      return "no corners found in the frame";
    case Cause::kNoReferenceCorners:
      return "no corners found in the first frame, against which it is measured";
    case Cause::kOverlapTestFailed:
      return OverlapReason(frame);
    case Cause::kTooFewMatches:
      return ShortReason(frame);
    case Cause::kShiftTooSmall:
      return "shift too small (" + Percent(frame.shiftShare) + " of the frame, more than " +
             ShiftLimit(1 - JQFrameVerdict::kMostOverlap, record.settings) + " needed)";
    case Cause::kShiftTooLarge:
      return "shift too large (" + Percent(frame.shiftShare) + " of the frame, less than " +
             ShiftLimit(1 - JQFrameVerdict::kLeastOverlap, record.settings) + " needed)";
    case Cause::kSizeDiffers:
      return "size differs: " + Pixels(frame.size) + " pixels instead of " + Pixels(frame.expected);
    case Cause::kUnreadable:
      return "unreadable: " + frame.detail;
    case Cause::kTakenBack:
      return "taken back, doubtful: " + DoubtText(*frame.doubt);
    case Cause::kNotConnected:
      return UnconnectedReason(record, frame);
    case Cause::kFailed:
      return "stitching it failed: " + frame.detail;
    case Cause::kNotReached:
      return "not reached: " + frame.detail;
  }
  return std::string();
}

std::string ShortReason(const FrameResult& frame) {
  switch (frame.cause) {
    case Cause::kTooFewMatches:
      return "too few matches (" + MatchesOfNeeded(frame) + ")";
    case Cause::kShiftTooSmall:
    case Cause::kShiftTooLarge:
      return "shift of " + Percent(frame.shiftShare);
    default:
      return CauseName(frame.cause);
  }
}

std::string AdviceText(const RunRecord& record, const FrameResult& frame) {
  switch (frame.cause) {
    case Cause::kNoCorners:
      return "an empty field of view cannot be placed; keep something in view, in focus and lit";
    case Cause::kNoReferenceCorners:
      return "start the run with a frame that shows something";
    case Cause::kOverlapTestFailed:
      return OverlapAdvice(record, frame);
    case Cause::kTooFewMatches:
      return TooFewMatchesAdvice(record, frame);
    case Cause::kShiftTooSmall:
      return record.live ? std::string() : "leave it out, it shows little that is new";
    case Cause::kShiftTooLarge:
      return "move in smaller steps";
    case Cause::kSizeDiffers:
      return "give frames of one size";
    case Cause::kUnreadable:
      return "check the file, or leave it out";
    case Cause::kTakenBack:
      return "go back to where the frame before was placed, or take it with --doubtful keep";
    case Cause::kNotConnected:
      return "add a frame that overlaps it and the picture, or leave it out";
    case Cause::kFailed:
      return "leave it out, or report it";
    case Cause::kPlaced:
    case Cause::kNotReached:
      break;
  }
  return std::string();
}

std::string NoteText(const FrameResult& frame) {
  if (frame.inherited) return "it shows no corners and was placed by the frame before it; check it";
  return frame.Placed() && frame.Doubtful() ? "doubtful: " + DoubtText(*frame.doubt)
                                            : std::string();
}

}  // namespace jqstitch

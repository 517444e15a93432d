#include "words.h"

#include <cmath>
#include <cstdio>

#include "host/size_text.h"

using jqhost::Cause;
using jqhost::FrameResult;
using jqhost::RunRecord;

namespace jqpython {
namespace {

std::string Percent(double share) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f %%", 100.0 * share);
  return text;
}

std::string Against(const char* what, float value, float limit) {
  char text[96];
  std::snprintf(text, sizeof text, "%s by %.1f (limit %.0f)", what, static_cast<double>(value),
                static_cast<double>(limit));
  return text;
}

std::string Matches(const FrameResult& frame) {
  return std::to_string(frame.measured.matchCount) + " of the " +
         std::to_string(JQFrameVerdict::kMatchesNeeded) + " matches that are needed";
}

std::string OverlapReason(const JQFrameVerdict& measured) {
  const std::string test = "the overlap test failed: ";
  if (!std::isnan(measured.motion)) {
    return test + Against("the view changed", measured.motion, measured.motionLimit) +
           " grey levels since the frame before";
  }
  if (std::isnan(measured.brightness)) return test + "there is no picture to compare with";
  if (!(measured.brightness < measured.brightnessLimit)) {
    return test + Against("the brightness differs", measured.brightness, measured.brightnessLimit);
  }
  if (std::isnan(measured.definition)) return test + "there is no detail to compare";
  return test + Against("the sharpness differs", measured.definition, measured.definitionLimit);
}

// The stitcher compares the shift at the working scale with the whole frame.
std::string ShiftReason(const FrameResult& frame, const char* limit, float overlap, int level) {
  return "the shift of " + Percent(frame.shiftShare) + " of the frame is not " + limit + " " +
         std::to_string(std::lround(100.0 * (1.0 - static_cast<double>(overlap)) * level)) + " %";
}

std::string WhyNotPlaced(const FrameResult& frame, int level) {
  switch (frame.cause) {
    case Cause::kPlaced:
      return std::string();
    case Cause::kNoCorners:
      return "no corners were found in the frame";
    case Cause::kNoReferenceCorners:
      return "no corners were found in the frame that it is measured against";
    case Cause::kOverlapTestFailed:
      return OverlapReason(frame.measured);
    case Cause::kTooFewMatches:
      return "too few matches: " + Matches(frame);
    case Cause::kShiftTooSmall:
      return ShiftReason(frame, "more than", JQFrameVerdict::kMostOverlap, level);
    case Cause::kShiftTooLarge:
      return ShiftReason(frame, "less than", JQFrameVerdict::kLeastOverlap, level);
    case Cause::kSizeDiffers:
      return "its size differs: " + jqhost::SizeText(frame.size) + " pixels instead of " +
             jqhost::SizeText(frame.expected);
    case Cause::kUnreadable:
      return "it cannot be read: " + frame.detail;
    case Cause::kTakenBack:
      return "it was taken back because its place is doubtful";
    case Cause::kFailed:
      return "stitching it failed: " + frame.detail;
    case Cause::kNotConnected:
      return "it is not connected with the others";
    case Cause::kNotReached:
      return "it was not reached: " + frame.detail;
  }
  return std::string();
}

std::string DoubtNote(const jqhost::PlacementDoubt& doubt) {
  switch (doubt.reason) {
    case jqhost::DoubtReason::kContradicted:
      return "doubtful: another shift fits the frame before better";
    case jqhost::DoubtReason::kRepeats:
      return "doubtful: other shifts fit the frame before as well";
    case jqhost::DoubtReason::kUnsupported:
      return "doubtful: it is hardly like the frame before where they overlap";
    case jqhost::DoubtReason::kNone:
      break;
  }
  return std::string();
}

}  // namespace

std::string Sentence(const FrameResult& frame, int detectLevel) {
  if (!frame.Placed()) return "left out: " + WhyNotPlaced(frame, detectLevel);
  if (frame.inherited) return "placed by the frame before it, because it shows no corners";
  if (!frame.measured.registered) return "placed: the picture starts with it";
  return "placed: " + std::to_string(frame.measured.matchCount) + " matches agree on a shift of " +
         Percent(frame.shiftShare) + " of the frame";
}

std::string ModuleWords::Outcome(const RunRecord& record) const {
  return std::string(OutcomeName(OutcomeOf(record))) + ": " + std::to_string(CountPlaced(record)) +
         " of " + std::to_string(record.frames.size()) + " frames placed, " +
         std::to_string(CountDoubtful(record)) + " of them doubtful";
}

std::string ModuleWords::Reason(const RunRecord& record, const FrameResult& frame) const {
  return WhyNotPlaced(frame, record.settings.detectLevel);
}

std::string ModuleWords::Advice(const RunRecord&, const FrameResult& frame) const {
  switch (frame.cause) {
    case Cause::kNoCorners:
    case Cause::kNoReferenceCorners:
      return "keep something in view, in focus and lit";
    case Cause::kTooFewMatches:
    case Cause::kShiftTooLarge:
      return "let frames overlap more";
    case Cause::kSizeDiffers:
      return "give frames of one size";
    case Cause::kUnreadable:
      return "check the file, or leave it out";
    default:
      return std::string();
  }
}

std::string ModuleWords::Note(const FrameResult& frame) const {
  if (frame.inherited) return "it shows no corners and was placed by the frame before it";
  return frame.Placed() && frame.Doubtful() ? DoubtNote(*frame.doubt) : std::string();
}

}  // namespace jqpython

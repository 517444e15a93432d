#include "words/frame_words.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

using jqhost::Cause;
using jqhost::FrameResult;
using jqhost::StitchSettings;

namespace jqstitch {
namespace {

std::string Pixels(cv::Size size) {
  return std::to_string(size.width) + " x " + std::to_string(size.height);
}

std::string Percent(double share) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f %%", 100.0 * share);
  return text;
}

std::string MatchesOfNeeded(const FrameResult& frame) {
  return std::to_string(frame.matches) + " of " + std::to_string(jqhost::kNeededMatches);
}

// The stitcher compares the shift at the working scale with the full frame.
std::string ShiftLimit(double share, const StitchSettings& settings) {
  return std::to_string(static_cast<int>(100 * share * settings.detectLevel + 0.5)) + " %";
}

// A batch run has no options of its own for the stitcher.
std::string With(const StitchSettings& settings) {
  return settings.usePresets ? "" : "use jqstitch live with ";
}

std::string MoreCorners(const StitchSettings& settings) {
  return With(settings) + "--corner-budget " +
         std::to_string(std::min(100, 2 * settings.cornerBudget + 16));
}

std::string OverlapReason(const StitchSettings& settings, const FrameResult& frame) {
  std::string text = "overlap test failed: ";
  text += settings.overlapMode == 0
              ? "brightness or sharpness differs too much from the picture so far"
              : "the view changed too much since the frame before";
  // The measurement comes after the test, so it can tell whether passing the test
  // would have helped.
  if (frame.matches < jqhost::kNeededMatches) {
    text += "; only " + MatchesOfNeeded(frame) + " matches besides";
  }
  return text;
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

std::string ReasonText(const StitchSettings& settings, const FrameResult& frame) {
  switch (frame.cause) {
    case Cause::kPlaced:
      return std::string();
    case Cause::kNoCorners:
      return "no corners found in the frame";
    case Cause::kNoReferenceCorners:
      return "no corners found in the first frame, against which it is measured";
    case Cause::kOverlapTestFailed:
      return OverlapReason(settings, frame);
    case Cause::kTooFewMatches:
      return "too few matches (" + MatchesOfNeeded(frame) + ")";
    case Cause::kShiftTooSmall:
      return "shift too small (" + Percent(frame.shiftShare) + " of the frame, more than " +
             ShiftLimit(jqhost::kLeastShift, settings) + " needed)";
    case Cause::kShiftTooLarge:
      return "shift too large (" + Percent(frame.shiftShare) + " of the frame, less than " +
             ShiftLimit(jqhost::kMostShift, settings) + " needed)";
    case Cause::kSizeDiffers:
      return "size differs: " + Pixels(frame.size) + " pixels instead of " + Pixels(frame.expected);
    case Cause::kUnreadable:
      return "unreadable: " + frame.detail;
    case Cause::kFailed:
      return "stitching it failed: " + frame.detail;
    case Cause::kNotReached:
      return "not reached: " + frame.detail;
  }
  return std::string();
}

std::string AdviceText(const StitchSettings& settings, const FrameResult& frame) {
  switch (frame.cause) {
    case Cause::kNoCorners:
      return "an empty field of view cannot be placed; else focus, light the object, or " +
             MoreCorners(settings);
    case Cause::kNoReferenceCorners:
      return "start the run with a frame that shows something";
    case Cause::kOverlapTestFailed:
      return settings.overlapMode == 0
                 ? "keep exposure and focus steady, take smaller steps, or " + With(settings) +
                       "--overlap-mode 1"
                 : "move more slowly, or " + With(settings) + "--overlap-mode 0";
    case Cause::kTooFewMatches:
      return "let frames overlap more, keep them sharp, or " + MoreCorners(settings);
    case Cause::kShiftTooSmall:
      return "nothing to do if the next frames go further; else move in larger steps";
    case Cause::kShiftTooLarge:
      return "move in smaller steps";
    case Cause::kSizeDiffers:
      return "give frames of one size";
    case Cause::kUnreadable:
      return "check the file, or leave it out";
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
  return frame.Doubtful() ? "doubtful: " + DoubtText(*frame.doubt) : std::string();
}

}  // namespace jqstitch

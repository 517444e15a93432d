#include "run/verdict.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace jqstitch {
namespace {

constexpr int kNeededMatches = 11;
constexpr int kLeastShiftPercent = 10;
constexpr int kMostShiftPercent = 90;

void LeaveOut(Verdict verdict, const std::string& reason, const std::string& advice,
              FrameResult& result) {
  result.verdict = verdict;
  result.reason = reason;
  result.advice = advice;
}

std::string Pixels(cv::Size size) {
  return std::to_string(size.width) + " x " + std::to_string(size.height);
}

std::string Percent(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f %%", value);
  return text;
}

}  // namespace

const char* VerdictName(Verdict verdict) {
  switch (verdict) {
    case Verdict::kPlaced:
      return "placed";
    case Verdict::kNoCorners:
      return "no corners found";
    case Verdict::kNoReferenceCorners:
      return "no corners in the first frame";
    case Verdict::kOverlapTestFailed:
      return "overlap test failed";
    case Verdict::kTooFewMatches:
      return "too few matches";
    case Verdict::kShiftTooSmall:
      return "shift too small";
    case Verdict::kShiftTooLarge:
      return "shift too large";
    case Verdict::kSizeDiffers:
      return "size differs";
    case Verdict::kUnreadable:
      return "unreadable";
    case Verdict::kFailed:
      return "failed";
    case Verdict::kNotReached:
      return "not reached";
  }
  return "";
}

bool HasCorners(const cv::Mat& frame, const StitchSettings& settings) {
  const cv::Size working(frame.cols / settings.detectLevel, frame.rows / settings.detectLevel);
  if (frame.empty() || working.area() == 0) return false;
  cv::Mat scaled = frame;
  if (settings.detectLevel != 1) cv::resize(frame, scaled, working, 0, 0, cv::INTER_LINEAR);
  cv::Mat grey;
  cv::cvtColor(scaled, grey, cv::COLOR_RGB2GRAY);  // as the engine does, whatever the order
  JQStitchingAlgorithm engine;
  engine.SetParameter(settings.detectLevel, settings.cornerBudget, settings.overlapMode,
                      settings.usePresets ? 1 : 0);
  std::vector<cv::Point> corners;
  engine.FindHarrisCornerCoordianteFun(grey, corners);
  return !corners.empty();
}

void FillMeasurements(const stitchflags& flags, cv::Size frame, const StitchSettings& settings,
                      FrameResult& result) {
  result.registered = true;
  result.matches = flags.matchCount;
  result.offset = cv::Point(flags.offsetX, flags.offsetY);
  const int x = std::abs(flags.offsetX), y = std::abs(flags.offsetY);
  const int extent = std::max(1, x > y ? frame.width : frame.height);
  result.shiftPercent = 100.0 * std::max(x, y) * settings.detectLevel / extent;
}

void ExplainLeftOut(const stitchflags& flags, cv::Size frame, const StitchSettings& settings,
                    const std::function<bool()>& hasCorners,
                    const std::function<bool()>& referenceHasCorners, FrameResult& result) {
  // A batch run has no options of its own for the stitcher.
  const std::string with = settings.usePresets ? "" : "use jqstitch live with ";
  const std::string moreCorners =
      with + "--corner-budget " + std::to_string(std::min(100, 2 * settings.cornerBudget + 16));
  if (!hasCorners()) {
    return LeaveOut(
        Verdict::kNoCorners, "no corners found in the frame",
        "an empty field of view cannot be placed; else focus, light the object, or " + moreCorners,
        result);
  }
  if (!referenceHasCorners()) {
    return LeaveOut(Verdict::kNoReferenceCorners,
                    "no corners found in the first frame, against which it is measured",
                    "start the run with a frame that shows something", result);
  }
  FillMeasurements(flags, frame, settings, result);
  if (flags.overlapFlag != 1) {
    const bool byOverlap = settings.overlapMode == 0;
    // The measurement comes after the test, so it can tell whether passing the
    // test would have helped.
    const std::string matches = flags.matchCount < kNeededMatches
                                    ? "; only " + std::to_string(flags.matchCount) + " of " +
                                          std::to_string(kNeededMatches) + " matches besides"
                                    : std::string();
    return LeaveOut(
        Verdict::kOverlapTestFailed,
        "overlap test failed: " +
            std::string(byOverlap
                            ? "brightness or sharpness differs too much from the picture so far"
                            : "the view changed too much since the frame before") +
            matches,
        byOverlap
            ? "keep exposure and focus steady, take smaller steps, or " + with + "--overlap-mode 1"
            : "move more slowly, or " + with + "--overlap-mode 0",
        result);
  }
  if (flags.matchCount < kNeededMatches) {
    return LeaveOut(Verdict::kTooFewMatches,
                    "too few matches (" + std::to_string(flags.matchCount) + " of " +
                        std::to_string(kNeededMatches) + ")",
                    "let frames overlap more, keep them sharp, or " + moreCorners, result);
  }
  // The stitcher compares the shift at the working scale with the full frame.
  const int least = kLeastShiftPercent * settings.detectLevel;
  const int most = kMostShiftPercent * settings.detectLevel;
  if (result.shiftPercent <= (least + most) / 2.0) {
    return LeaveOut(Verdict::kShiftTooSmall,
                    "shift too small (" + Percent(result.shiftPercent) +
                        " of the frame, more than " + std::to_string(least) + " % needed)",
                    "nothing to do if the next frames go further; else move in larger steps",
                    result);
  }
  LeaveOut(Verdict::kShiftTooLarge,
           "shift too large (" + Percent(result.shiftPercent) + " of the frame, less than " +
               std::to_string(most) + " % needed)",
           "move in smaller steps", result);
}

void ExplainUnreadable(const std::string& why, FrameResult& result) {
  LeaveOut(Verdict::kUnreadable, "unreadable: " + why, "check the file, or leave it out", result);
}

void ExplainSize(cv::Size size, cv::Size expected, FrameResult& result) {
  LeaveOut(Verdict::kSizeDiffers,
           "size differs: " + Pixels(size) + " pixels instead of " + Pixels(expected),
           "give frames of one size", result);
}

void ExplainFailure(const std::string& what, FrameResult& result) {
  LeaveOut(Verdict::kFailed, "stitching it failed: " + what, "leave it out, or report it", result);
}

void ExplainNotReached(const std::string& why, FrameResult& result) {
  LeaveOut(Verdict::kNotReached, "not reached: " + why, std::string(), result);
}

}  // namespace jqstitch

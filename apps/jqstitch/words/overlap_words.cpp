#include "words/overlap_words.h"

#include <cmath>
#include <optional>

#include "host/record/run_track.h"
#include "words/numbers.h"

using jqhost::Appearance;
using jqhost::FrameResult;
using jqhost::RunRecord;

namespace jqstitch {
namespace {

// Beyond these a frame looks different at its own place, not only at the one where
// the test looked.
constexpr double kOtherExposure = 0.08;
constexpr double kOtherFocus = 0.7;
// From such steps on, the place where a live run looks shows too much that is not in
// the frame.
constexpr double kLargeStep = 0.05;

std::string Against(float value, float limit) {
  return Fixed(value, 1) + " (limit " + Fixed(limit, 0) + ")";
}

// "+23 %" or "-8 %".
std::string Change(double ratio) {
  return (ratio >= 1 ? "+" : "") + Fixed(100 * (ratio - 1), 0) + " %";
}

// Without them a batch run places a frame as little as a live run does.
bool HasEnoughMatches(const FrameResult& frame) {
  return frame.measured.registered && frame.measured.matchCount >= JQFrameVerdict::kMatchesNeeded;
}

// For a live run whose steps are, or may be, too large.
std::string StepAdvice(const RunRecord& record, const FrameResult& frame) {
  const std::optional<double> step = MedianStep(record);
  if (step && *step < kLargeStep) return std::string();
  const std::string remedy = record.fromFiles && HasEnoughMatches(frame)
                                 ? "use jqstitch batch"
                                 : "move in steps of 1 to 5 %";
  return step ? "the steps from frame to frame (median " + Percent(*step) +
                    ") are too large for a live run: " + remedy
              : "if the steps from frame to frame are larger than 5 % of the frame, " + remedy;
}

}  // namespace

std::string OverlapReason(const FrameResult& frame) {
  const JQFrameVerdict& m = frame.measured;
  std::string text = "overlap test failed: ";
  if (!std::isnan(m.motion)) {
    text += "the view changed by " + Against(m.motion, m.motionLimit) +
            " grey levels since the frame before";
  } else if (std::isnan(m.brightness)) {
    text += "where the previous measurement pointed there is no picture to compare with";
  } else if (!(m.brightness < m.brightnessLimit)) {
    text += "where the previous measurement pointed, brightness differs by " +
            Against(m.brightness, m.brightnessLimit) + " grey levels";
  } else if (!std::isnan(m.definition)) {
    text += "where the previous measurement pointed, sharpness differs by " +
            Against(m.definition, m.definitionLimit);
  } else {
    text += "where the previous measurement pointed there is no detail to compare";
  }
  if (m.registered && m.matchCount < JQFrameVerdict::kMatchesNeeded) {
    text += "; only " + std::to_string(m.matchCount) + " of " +
            std::to_string(JQFrameVerdict::kMatchesNeeded) + " matches besides";
  }
  return text;
}

std::string OverlapAdvice(const RunRecord& record, const FrameResult& frame) {
  if (record.settings.overlapMode != 0) {
    return "judge the overlap instead of the motion: --overlap-mode 0";
  }
  // A batch run does not judge this, so files need no steadier light or focus.
  const std::string steady = record.live && record.fromFiles && HasEnoughMatches(frame)
                                 ? ": keep it steady, or use jqstitch batch"
                                 : ": keep it steady";
  if (frame.appearance) {
    const Appearance& beside = *frame.appearance;
    if (std::abs(beside.brightness - 1) > kOtherExposure) {
      return "the exposure changed (" + Change(beside.brightness) + " beside the picture so far)" +
             steady;
    }
    if (beside.sharpness < kOtherFocus || beside.sharpness > 1 / kOtherFocus) {
      return "the focus changed (fine detail " + Change(beside.sharpness) +
             " beside the picture so far)" + steady;
    }
  }
  if (!record.live) return std::string();
  std::string advice = StepAdvice(record, frame);
  if (!advice.empty()) return advice;
  // The steps are small, so the test looked at nearly the same place.
  const JQFrameVerdict& m = frame.measured;
  if (m.brightness >= m.brightnessLimit) {
    return "the exposure changed (by " + Fixed(m.brightness, 0) + " grey levels)" + steady;
  }
  return m.definition >= m.definitionLimit
             ? "the focus changed (sharpness by " + Fixed(m.definition, 0) + ")" + steady
             : std::string();
}

std::string TooFewMatchesAdvice(const RunRecord& record, const FrameResult& frame) {
  return record.live ? StepAdvice(record, frame) : "let frames overlap more";
}

}  // namespace jqstitch

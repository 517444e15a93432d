#include "report/summary.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include "exit_codes.h"

namespace jqstitch {
namespace {

// A video's frames are many and alike: neighbours with one verdict share a line.
// Frames that were never reached always do.
constexpr std::size_t kLongestList = 400;

std::string Fixed(double value, int digits) {
  char text[48];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

std::string FrameText(const FrameResult& frame) {
  if (frame.verdict == Verdict::kNotReached) return frame.reason;
  if (frame.verdict != Verdict::kPlaced) return "left out: " + frame.reason;
  std::string text =
      "placed at " + std::to_string(frame.position.x) + ", " + std::to_string(frame.position.y);
  if (!frame.note.empty()) text += " (" + frame.note + ")";
  return text;
}

void AppendFrames(const RunRecord& record, std::string& text) {
  const std::vector<std::string> names = ShortNames(record.frames);
  const bool many = record.frames.size() > kLongestList;
  for (std::size_t i = 0; i < names.size();) {
    const FrameResult& first = record.frames[i];
    const bool share = many || first.verdict == Verdict::kNotReached;
    std::size_t end = i + 1;
    while (share && end < names.size() && record.frames[end].verdict == first.verdict) ++end;
    text += "  " + names[i];
    if (end - i == 1) {
      text += ": " + FrameText(first) + "\n";
    } else {
      text += " to " + names[end - 1] + ": " + std::to_string(end - i);
      text += " frames ";
      if (first.verdict == Verdict::kNotReached) {
        text += first.reason;
      } else {
        text += first.verdict == Verdict::kPlaced ? "" : "left out: ";
        text += VerdictName(first.verdict);
      }
      text += "\n";
    }
    i = end;
  }
}

void AppendAdvice(const RunRecord& record, std::string& text) {
  std::map<Verdict, int> counts;
  std::map<Verdict, std::string> advice;
  for (const FrameResult& frame : record.frames) {
    if (frame.verdict == Verdict::kPlaced || frame.advice.empty()) continue;
    ++counts[frame.verdict];
    advice[frame.verdict] = frame.advice;
  }
  for (const auto& [verdict, count] : counts) {
    text += std::to_string(count) + " x " + VerdictName(verdict) + ": " + advice[verdict] + "\n";
  }
}

void AppendTruth(const TruthComparison& truth, std::string& text) {
  if (truth.errors.empty()) {
    text += "Position error: the truth knows none of the placed frames\n";
    return;
  }
  text += "Position error in pixels: to the neighbour placed before, median " +
          Fixed(truth.neighbourMedian, 2) + ", maximum " + Fixed(truth.neighbourMaximum, 2) +
          " (along an axis " + Fixed(truth.neighbourAxisMaximum, 2) +
          "); to the first frame, median " + Fixed(truth.absoluteMedian, 2) + ", maximum " +
          Fixed(truth.absoluteMaximum, 2) + "\n";
  if (truth.unknown > 0) {
    text += "  (" + std::to_string(truth.unknown) + " placed frames are not in the truth)\n";
  }
}

}  // namespace

std::string OutcomeText(const RunRecord& record) {
  const int total = static_cast<int>(record.frames.size());
  const int placed = CountPlaced(record);
  const std::string counts = std::to_string(placed) + " of " + std::to_string(total);
  switch (OutcomeExitCode(record)) {
    case kExitOk:
      return total == 1 ? "All placed: there is one frame, and it is the picture"
                        : "All placed: " + counts + " frames";
    case kExitSomeLeftOut:
      return "Some left out: " + counts + " frames placed, " + std::to_string(total - placed) +
             " left out";
    case kExitNonePlaced:
      return "None placed: no frame besides the first could be placed (" + std::to_string(total) +
             " frames)";
    default:
      return "No picture: none of the " + std::to_string(total) + " frames was placed";
  }
}

std::string SummaryText(const RunRecord& record) {
  std::string text;
  AppendFrames(record, text);
  text += OutcomeText(record) + ", " + Fixed(record.seconds, 1) + " s";
  if (record.skipped > 0)
    text += " (" + std::to_string(record.skipped) + " passed over by --every)";
  text += "\n";
  AppendAdvice(record, text);
  for (const std::string& note : record.notes) text += note + "\n";
  if (record.truth) AppendTruth(*record.truth, text);
  if (!record.picture.empty()) {
    text += "Picture: " + record.picture + ", " + std::to_string(record.pictureSize.width) + " x " +
            std::to_string(record.pictureSize.height) + " pixels";
    if (record.trimmedBy == "nothing") text += ", not trimmed";
    text += "\n";
  }
  text.pop_back();
  return text;
}

}  // namespace jqstitch

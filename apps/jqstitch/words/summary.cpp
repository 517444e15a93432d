#include "words/summary.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include "words/frame_words.h"

using jqhost::Cause;
using jqhost::FrameResult;
using jqhost::Outcome;
using jqhost::RunRecord;
using jqhost::TruthComparison;

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

std::string FrameText(const RunRecord& record, const FrameResult& frame) {
  const std::string reason = ReasonText(record.settings, frame);
  if (frame.cause == Cause::kNotReached) return reason;
  if (!frame.Placed()) return "left out: " + reason;
  const std::string note = NoteText(frame);
  return "placed at " + std::to_string(frame.position.x) + ", " + std::to_string(frame.position.y) +
         (note.empty() ? "" : " (" + note + ")");
}

void AppendFrames(const RunRecord& record, std::string& text) {
  const std::vector<std::string> names = jqhost::ShortNames(record.frames);
  const bool many = record.frames.size() > kLongestList;
  for (std::size_t i = 0; i < names.size();) {
    const FrameResult& first = record.frames[i];
    const bool share = many || first.cause == Cause::kNotReached;
    std::size_t end = i + 1;
    while (share && end < names.size() && record.frames[end].cause == first.cause &&
           record.frames[end].Doubtful() == first.Doubtful()) {
      ++end;
    }
    text += "  " + names[i];
    if (end - i == 1) {
      text += ": " + FrameText(record, first) + "\n";
    } else {
      text += " to " + names[end - 1] + ": " + std::to_string(end - i);
      text += " frames ";
      if (first.cause == Cause::kNotReached) {
        text += ReasonText(record.settings, first);
      } else {
        text += first.Placed() ? "" : "left out: ";
        text += CauseName(first.cause);
        text += first.Doubtful() ? ", doubtful" : "";
      }
      text += "\n";
    }
    i = end;
  }
}

void AppendAdvice(const RunRecord& record, std::string& text) {
  std::map<Cause, int> counts;
  std::map<Cause, std::string> advice;
  for (const FrameResult& frame : record.frames) {
    const std::string what = AdviceText(record.settings, frame);
    if (what.empty()) continue;
    ++counts[frame.cause];
    advice[frame.cause] = what;
  }
  for (const auto& [cause, count] : counts) {
    text += std::to_string(count) + " x " + CauseName(cause) + ": " + advice[cause] + "\n";
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

// The last line, so that it is not missed.
void AppendDoubt(const RunRecord& record, std::string& text) {
  const int doubtful = CountDoubtful(record);
  if (doubtful == 0) return;
  text += "Doubtful: " + std::to_string(doubtful) + " of " + std::to_string(CountPlaced(record)) +
          " placed frames may lie in a wrong place; look at the picture there\n";
}

}  // namespace

std::string OutcomeText(const RunRecord& record) {
  const int total = static_cast<int>(record.frames.size());
  const int placed = CountPlaced(record);
  const std::string counts = std::to_string(placed) + " of " + std::to_string(total);
  switch (OutcomeOf(record)) {
    case Outcome::kAllPlaced:
      return total == 1 ? "All placed: there is one frame, and it is the picture"
                        : "All placed: " + counts + " frames";
    case Outcome::kSomeDoubtful:
      return "All placed, some doubtful: " + counts + " frames, " +
             std::to_string(CountDoubtful(record)) + " of them doubtful";
    case Outcome::kSomeLeftOut:
      return "Some left out: " + counts + " frames placed, " + std::to_string(total - placed) +
             " left out";
    case Outcome::kNonePlaced:
      return "None placed: no frame besides the first could be placed (" + std::to_string(total) +
             " frames)";
    case Outcome::kNoPicture:
      break;
  }
  return "No picture: none of the " + std::to_string(total) + " frames was placed";
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
  AppendDoubt(record, text);
  text.pop_back();
  return text;
}

}  // namespace jqstitch

#include "words/summary.h"

#include <algorithm>
#include <map>
#include <utility>

#include "host/output/scale_bar.h"
#include "words/frame_list.h"
#include "words/frame_words.h"
#include "words/numbers.h"

using jqhost::Cause;
using jqhost::FrameResult;
using jqhost::Outcome;
using jqhost::RunRecord;
using jqhost::Standing;
using jqhost::TruthComparison;

namespace jqstitch {
namespace {

// One line per piece of advice, with the number of frames that it is for.
void AppendAdvice(const RunRecord& record, std::string& text) {
  std::map<std::pair<Cause, std::string>, int> counts;
  for (const FrameResult& frame : record.frames) {
    const std::string advice = AdviceText(record, frame);
    if (!advice.empty()) ++counts[{frame.cause, advice}];
  }
  for (const auto& [entry, count] : counts) {
    text += std::to_string(count) + " x " + CauseName(entry.first) + ": " + entry.second + "\n";
  }
}

std::string LostCounts(const RunRecord& record) {
  std::string text;
  for (const Standing standing :
       {Standing::kTracked, Standing::kLost, Standing::kUnusable, Standing::kNotReached}) {
    const int count = CountStanding(record, standing);
    if (count > 0) text += ", " + std::to_string(count) + " " + StandingName(standing);
  }
  return text;
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
  if (const int takenBack = CountTakenBack(record); takenBack > 0) {
    text += "Taken back: " + std::to_string(takenBack) + " frame" + (takenBack > 1 ? "s" : "") +
            " whose place could not be trusted\n";
  }
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
      return "All placed, some doubtful: " + counts + " frames" + LostCounts(record) + ", " +
             std::to_string(CountDoubtful(record)) + " of them doubtful";
    case Outcome::kAllFollowed:
      return "All followed: " + counts + " frames placed" + LostCounts(record);
    case Outcome::kSomeLeftOut:
      if (record.announced > 0 && CountStanding(record, Standing::kLost) == 0) {
        return "Ended early: " + counts + " frames placed" + LostCounts(record);
      }
      if (record.live) return "Some lost: " + counts + " frames placed" + LostCounts(record);
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
  text += FrameListText(record);
  text += OutcomeText(record) + ", " + Fixed(record.seconds, 1) + " s";
  if (record.skipped > 0)
    text += " (" + std::to_string(record.skipped) + " passed over by --every)";
  text += "\n";
  text += LossText(record);
  AppendAdvice(record, text);
  for (const std::string& note : record.notes) text += note + "\n";
  if (record.truth) AppendTruth(*record.truth, text);
  if (!record.picture.empty()) {
    text += "Picture: " + record.picture + ", " + std::to_string(record.pictureSize.width) + " x " +
            std::to_string(record.pictureSize.height) + " pixels";
    if (record.trimmedBy == "nothing") text += ", not trimmed";
    if (record.pixelSize) {
      text += ", " + jqhost::LengthText(record.pixelSize->width * record.pictureSize.width) +
              " x " + jqhost::LengthText(record.pixelSize->height * record.pictureSize.height);
    }
    text += "\n";
  }
  AppendDoubt(record, text);
  text.pop_back();
  return text;
}

}  // namespace jqstitch

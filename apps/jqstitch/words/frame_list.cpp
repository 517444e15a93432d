#include "words/frame_list.h"

#include <algorithm>
#include <vector>

#include "host/record/run_track.h"
#include "words/frame_words.h"
#include "words/numbers.h"

using jqhost::Cause;
using jqhost::FrameResult;
using jqhost::Loss;
using jqhost::RunRecord;
using jqhost::Standing;

namespace jqstitch {
namespace {

// A video's frames are many and alike: placed neighbours share a line then, too.
constexpr std::size_t kLongestList = 400;
constexpr std::size_t kMostLosses = 10;

std::string Place(cv::Point corner) {
  return std::to_string(corner.x) + ", " + std::to_string(corner.y);
}

// "left out", or what a live run calls it; nothing for frames never reached.
std::string StandingText(const RunRecord& record, const FrameResult& frame) {
  const Standing standing = StandingOf(frame);
  if (standing == Standing::kNotReached) return std::string();
  const bool held = standing == Standing::kTracked || standing == Standing::kLost;
  return record.live && held ? StandingName(standing) : "left out";
}

std::string SingleText(const RunRecord& record, const FrameResult& frame) {
  if (frame.Placed()) {
    const std::string note = NoteText(frame);
    return "placed at " + Place(frame.position) + (note.empty() ? "" : " (" + note + ")");
  }
  const std::string standing = StandingText(record, frame);
  return standing + (standing.empty() ? "" : ": ") + ReasonText(record, frame);
}

std::string Range(double least, double most, int digits) {
  const std::string from = Fixed(least, digits), to = Fixed(most, digits);
  return from == to ? from : from + " to " + to;
}

// The cause that frames share, with the range of the number that counts.
std::string SharedReason(const RunRecord& record, std::size_t begin, std::size_t end) {
  const FrameResult& first = record.frames[begin];
  int fewest = first.measured.matchCount, most = fewest;
  double least = first.shiftShare, largest = least;
  bool same = true;
  for (std::size_t i = begin + 1; i < end; ++i) {
    const FrameResult& frame = record.frames[i];
    fewest = std::min(fewest, frame.measured.matchCount);
    most = std::max(most, frame.measured.matchCount);
    least = std::min(least, frame.shiftShare);
    largest = std::max(largest, frame.shiftShare);
    same = same && frame.detail == first.detail && frame.size == first.size;
  }
  switch (first.cause) {
    case Cause::kTooFewMatches:
      return "too few matches (" + Range(fewest, most, 0) + " of " +
             std::to_string(JQFrameVerdict::kMatchesNeeded) + ")";
    case Cause::kShiftTooSmall:
    case Cause::kShiftTooLarge:
      return std::string(CauseName(first.cause)) + " (" + Range(100 * least, 100 * largest, 1) +
             " % of the frame)";
    case Cause::kOverlapTestFailed:
      return CauseName(first.cause);
    default:
      return same ? ReasonText(record, first) : CauseName(first.cause);
  }
}

std::string GroupText(const RunRecord& record, std::size_t begin, std::size_t end) {
  const FrameResult& first = record.frames[begin];
  std::string text = std::to_string(end - begin) + " frames ";
  if (first.Placed()) return text + (first.Doubtful() ? "placed, doubtful" : "placed");
  const std::string standing = StandingText(record, first);
  return text + standing + (standing.empty() ? "" : ": ") + SharedReason(record, begin, end);
}

}  // namespace

std::string FrameListText(const RunRecord& record) {
  const std::vector<std::string> names = jqhost::ShortNames(record.frames);
  const bool many = record.frames.size() > kLongestList;
  std::string text;
  for (std::size_t i = 0; i < names.size();) {
    const FrameResult& first = record.frames[i];
    std::size_t end = i + 1;
    // Those that nothing connects each have a best pair to tell.
    const bool alone = first.cause == Cause::kNotConnected && !many;
    while ((many || !first.Placed()) && !alone && end < names.size() &&
           record.frames[end].cause == first.cause &&
           record.frames[end].Doubtful() == first.Doubtful()) {
      ++end;
    }
    text += "  " + names[i];
    text += end - i == 1 ? ": " + SingleText(record, first)
                         : " to " + names[end - 1] + ": " + GroupText(record, i, end);
    text += "\n";
    i = end;
  }
  return text;
}

std::string LossText(const RunRecord& record) {
  if (!record.live) return std::string();
  const std::vector<Loss> losses = jqhost::FindLosses(record.frames);
  const auto places = jqhost::CameraPlaces(record.frames);
  std::string text;
  for (std::size_t i = 0; i < std::min(losses.size(), kMostLosses); ++i) {
    const Loss& loss = losses[i];
    const FrameResult& held = record.frames[loss.held];
    text += "Track lost at frame " + std::to_string(record.frames[loss.first].number);
    if (places[loss.held]) {
      text += ", beside frame " + std::to_string(held.number) + " at " +
              Place(record.firstCorner + *places[loss.held]) + " of the picture";
    }
    text += loss.regained
                ? ", found again after frame " + std::to_string(record.frames[loss.last].number)
                : ", and not found again";
    text += "\n";
  }
  if (losses.size() > kMostLosses) {
    text += "Track lost " + std::to_string(losses.size() - kMostLosses) + " more times\n";
  }
  return text;
}

}  // namespace jqstitch

#include "host/record/run_record.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace jqhost {

int CountPlaced(const RunRecord& record) {
  return static_cast<int>(std::count_if(record.frames.begin(), record.frames.end(),
                                        [](const FrameResult& f) { return f.Placed(); }));
}

int CountDoubtful(const RunRecord& record) {
  return static_cast<int>(
      std::count_if(record.frames.begin(), record.frames.end(),
                    [](const FrameResult& f) { return f.Placed() && f.Doubtful(); }));
}

int CountTakenBack(const RunRecord& record) {
  return static_cast<int>(
      std::count_if(record.frames.begin(), record.frames.end(),
                    [](const FrameResult& f) { return f.cause == Cause::kTakenBack; }));
}

int CountStanding(const RunRecord& record, Standing standing) {
  return static_cast<int>(
      std::count_if(record.frames.begin(), record.frames.end(),
                    [standing](const FrameResult& f) { return StandingOf(f) == standing; }));
}

bool OnlyFirstPlaced(const RunRecord& record) {
  return record.frames.size() > 1 && CountPlaced(record) == 1;
}

Outcome OutcomeOf(const RunRecord& record) {
  const auto total = static_cast<int>(record.frames.size());
  const int placed = CountPlaced(record);
  if (placed == 0) return Outcome::kNoPicture;
  const int followed = record.live ? placed + CountStanding(record, Standing::kTracked) : placed;
  if (followed == total && record.announced == 0) {
    if (CountDoubtful(record) > 0) return Outcome::kSomeDoubtful;
    return placed == total ? Outcome::kAllPlaced : Outcome::kAllFollowed;
  }
  // The first frame starts the picture; alone it is no stitching, unless the run
  // was stopped before any other frame was tried.
  const int tried = total - CountStanding(record, Standing::kNotReached);
  return placed == 1 && tried > 1 ? Outcome::kNonePlaced : Outcome::kSomeLeftOut;
}

const char* OutcomeName(Outcome outcome) {
  switch (outcome) {
    case Outcome::kAllPlaced:
      return "all placed";
    case Outcome::kSomeDoubtful:
      return "some doubtful";
    case Outcome::kAllFollowed:
      return "all followed";
    case Outcome::kSomeLeftOut:
      return "some left out";
    case Outcome::kNonePlaced:
      return "none placed";
    case Outcome::kNoPicture:
      return "no picture";
  }
  return "";
}

cv::Point CornerInPicture(const RunRecord& record, const FrameResult& frame) {
  return record.firstCorner + frame.position;
}

std::vector<std::string> ShortNames(const std::vector<FrameResult>& frames) {
  std::vector<std::string> names;
  names.reserve(frames.size());
  const auto folder = [](const FrameResult& f) { return fs::path(f.name).parent_path(); };
  const bool oneFolder = std::all_of(frames.begin(), frames.end(), [&](const FrameResult& f) {
    return folder(f) == folder(frames.front());
  });
  for (const FrameResult& frame : frames) {
    names.push_back(oneFolder ? fs::path(frame.name).filename().string() : frame.name);
  }
  return names;
}

}  // namespace jqhost

#include "run/run_record.h"

#include <algorithm>
#include <filesystem>

#include "exit_codes.h"

namespace fs = std::filesystem;

namespace jqstitch {

int CountPlaced(const RunRecord& record) {
  return static_cast<int>(
      std::count_if(record.frames.begin(), record.frames.end(),
                    [](const FrameResult& f) { return f.verdict == Verdict::kPlaced; }));
}

int OutcomeExitCode(const RunRecord& record) {
  const auto total = static_cast<int>(record.frames.size());
  const int placed = CountPlaced(record);
  if (placed == 0) return kExitWrongInput;
  if (placed == total) return kExitOk;
  // The first frame starts the picture; alone it is no stitching, unless the run
  // was stopped before any other frame was tried.
  const bool othersTried =
      std::any_of(record.frames.begin(), record.frames.end(), [](const FrameResult& f) {
        return f.verdict != Verdict::kPlaced && f.verdict != Verdict::kNotReached;
      });
  return placed == 1 && othersTried ? kExitNonePlaced : kExitSomeLeftOut;
}

const char* OutcomeName(const RunRecord& record) {
  switch (OutcomeExitCode(record)) {
    case kExitOk:
      return "all placed";
    case kExitSomeLeftOut:
      return "some left out";
    case kExitNonePlaced:
      return "none placed";
    default:
      return "no picture";
  }
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

}  // namespace jqstitch

#include "host/journal/journal_check.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "host/input_error.h"
#include "host/journal/journal_reader.h"
#include "host/journal/journal_replay.h"
#include "host/journal/picture_difference.h"
#include "host/output/pyramid/pyramid.h"
#include "host/output/save_picture.h"
#include "host/source/picture_reader.h"
#include "host/system/temporary_folder.h"

namespace jqhost {
namespace {

cv::Mat PictureOf(const ReplayedRun& run, bool trim) {
  if (run.state.mosaic.empty()) return run.firstFrame;
  return trim ? run.state.mosaic(run.state.now.placedBounds) : run.state.mosaic;
}

// Saved the same way, so that what is drawn into a picture, and what its format loses, is
// in both.
std::optional<std::string> Compare(const std::string& path, SaveOptions options,
                                   const cv::Mat& painted, const StopToken& stop) {
  const std::int64_t maxPixels = std::max(kMostPixels, static_cast<std::int64_t>(painted.total()));
  const bool tiles = PyramidKindOf(path) == PyramidKind::kDeepZoom;
  // What cannot be read is told before the picture is saved again.
  const cv::Mat saved = tiles ? cv::Mat() : ReadWhole(path, maxPixels);
  const TemporaryFolder folder;
  // The whole name counts: ".ome.tif" is another format than ".tif".
  options.path = folder.Path() + "/" + std::filesystem::path(path).filename().string();
  if (!SavePicture(painted, options, SaveProgress(), stop)) return std::nullopt;
  if (tiles) return TileDifference(path, options.path);
  return PixelDifference(saved, ReadWhole(options.path, maxPixels));
}

// The frames that the picture does not show are looked at all the same.
void ReadTheRest(const JournalFolder& folder, const JournalSteps& all, const JournalSteps& shown) {
  std::set<int> seen;
  for (const JournalStep& step : shown.Steps()) seen.insert(step.number);
  for (const JournalStep& step : all.Steps()) {
    if (step.frame && seen.count(step.number) == 0) ReadFrameFile(folder, *step.frame);
  }
}

}  // namespace

std::optional<JournalCheck> CheckJournal(const std::string& folder, const std::string& picture,
                                         const StopToken& stop,
                                         const std::function<void(int, int)>& onFrame) {
  const JournalFolder journal(folder, JournalFolder::Use::kRead);
  const JournalLog log = ReadLog(journal);
  if (!log.damage.empty()) throw InputError(log.damage);
  if (log.steps.Steps().empty()) throw InputError("the journal '" + folder + "' holds no frame");
  const PictureEntry entry = log.picture ? log.picture->entry : PictureEntry();
  const JournalSteps& shown = log.picture ? log.picture->steps : log.steps;

  JournalCheck check;
  check.torn = log.torn;
  const int total = static_cast<int>(shown.Steps().size());
  const auto run = ReplayRun(journal, shown, [&](const FrameEntry&, const cv::Mat&) {
    onFrame(++check.frames, total);
    return !stop.Requested();
  });
  if (!run) return std::nullopt;
  ReadTheRest(journal, log.steps, shown);
  check.picture = picture.empty() ? entry.save.path : picture;
  if (check.picture.empty()) {
    throw InputError("the journal '" + folder + "' is whole, with " + std::to_string(check.frames) +
                     " frames, but tells of no saved picture; name one with --picture FILE");
  }
  const auto difference = Compare(check.picture, entry.save, PictureOf(*run, entry.trim), stop);
  if (!difference) return std::nullopt;
  check.difference = *difference;
  return check;
}

}  // namespace jqhost

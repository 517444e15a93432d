#include "report/live_section.h"

#include <cstring>

#include "jqimageconvert.h"
#include "jqimagestitching.h"
#include "reference/stitcher.h"
#include "report/process.h"
#include "report/same.h"
#include "report/statistics.h"
#include "report/stopwatch.h"
#include "support/host_record.h"
#include "support/scene.h"

namespace jqbench {
namespace {

constexpr int kDetectLevel = 1;
constexpr int kCornerBudget = 8;
constexpr std::uint64_t kSeed = 20240501;

// The library's stitcher converts into memory of an earlier frame, the plain twin
// into new memory.
void TimeConversion(const Scene& scene, LiveResult& result) {
  constexpr int kRepeats = 5;
  const cv::Mat picture = scene.frame(0, cv::Point());
  _tagJQIMG record = HostRecord(picture);
  std::vector<double> library, plain;
  cv::Mat kept;
  ConvertJQImgToCv8UC3(&record, kept);
  for (int i = 0; i < kRepeats; ++i) {
    library.push_back(Milliseconds([&] { ConvertJQImgToCv8UC3(&record, kept); }));
    cv::Mat fresh;
    plain.push_back(Milliseconds([&] { reference::ConvertJQImgToCv8UC3(&record, fresh); }));
  }
  result.convertLibraryMs = Median(library);
  result.convertPlainMs = Median(plain);
}

FrameKind KindOf(bool placed, bool grown, bool newReference) {
  if (placed) return grown ? FrameKind::kPlacedGrown : FrameKind::kPlaced;
  return newReference ? FrameKind::kNotPlacedFirst : FrameKind::kNotPlaced;
}

}  // namespace

LiveResult RunLive(const LiveCase& what) {
  const cv::Size frame = what.frame;
  const Subject subject = what.overlapMode == 0 ? Subject::kTissue : Subject::kSpecks;
  const Scene scene(subject, frame, kSeed);
  const std::vector<cv::Point> path = WalkLoop(frame, what.frames);

  LiveResult result;
  JQImageStitching library;
  reference::Stitcher plain;
  bool newReference = false;
  for (int i = 0; i < what.frames; ++i) {
    const cv::Mat picture = scene.frame(i, path[static_cast<size_t>(i)]);
    _tagJQIMG record = HostRecord(picture);
    const cv::Size before = library.GetMosaic().size();
    double libraryMs = 0, plainMs = 0;
    long faults = 0;
    const _tagJQIMG* fromLibrary = nullptr;
    const _tagJQIMG* fromPlain = nullptr;
    const auto runLibrary = [&] {
      const long faultsBefore = MinorFaults();
      libraryMs = Milliseconds([&] {
        fromLibrary = library.Stitching(&record, what.overlapMode, kDetectLevel, kCornerBudget);
      });
      faults = MinorFaults() - faultsBefore;
    };
    const auto runPlain = [&] {
      plainMs = Milliseconds([&] {
        fromPlain = plain.Stitching(&record, what.overlapMode, kDetectLevel, kCornerBudget);
      });
    };
    if (i % 2 == 0) {
      runLibrary();
      runPlain();
    } else {
      runPlain();
      runLibrary();
    }
    ++result.equality.frames;
    result.equality.equal +=
        SameRun(library, plain) && SameRecord(*fromLibrary, *fromPlain) ? 1 : 0;
    // The first frame only starts the run, the second one makes the mosaic.
    const bool placed = library.IsLastFrameAccepted();
    if (i >= 2) {
      const FrameKind kind = KindOf(placed, library.GetMosaic().size() != before, newReference);
      result.times[static_cast<size_t>(kind)].add(libraryMs, plainMs);
      if (kind == FrameKind::kNotPlaced) result.faults.push_back(static_cast<double>(faults));
    }
    newReference = placed;
  }
  TimeConversion(scene, result);
  return result;
}

}  // namespace jqbench

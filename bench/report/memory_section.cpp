#include "report/memory_section.h"

#include <algorithm>
#include <vector>

#include "jqstitchingalgorithm.h"
#include "picture/growable_pixels.h"
#include "reference/algorithm.h"
#include "report/heap_count.h"
#include "report/process.h"
#include "support/scene.h"

namespace jqbench {
namespace {

constexpr int kSteadyFrames = 5;
constexpr std::uint64_t kSeed = 20240502;

struct Use {
  std::size_t scratchNotPlaced = 0;  // the most in one frame, bytes
  std::size_t scratchPlaced = 0;
  std::size_t kept = 0;          // after the last frame
  long kiloBytesAFrame = 0;      // growth of what is kept, per frame
  double faults = 0;             // a frame that is not placed
  std::size_t peakResident = 0;  // above what was resident before
};

std::size_t Above(std::size_t value, std::size_t base) {
  return value > base ? value - base : 0;
}

// The pictures that a host or stitcher holds (frames, mosaic) are no scratch.
template <class Engine>
Use Measure(cv::Size size, int overlapMode) {
  const Scene scene(overlapMode == 0 ? Subject::kTissue : Subject::kSpecks, size, kSeed);
  std::vector<cv::Mat> frames;
  for (int i = 0; i <= kSteadyFrames + 3; ++i) {
    frames.push_back(scene.frame(i, cv::Point(size.width * std::min(i, 4) / 50, 0)));
  }
  frames.push_back(scene.frame(100, cv::Point(size.width / 4, 0)));

  Use use;
  RestartPeakResident();
  const std::size_t residentBefore = Resident();
  const std::size_t base = HeapLive();
  Engine engine;
  engine.SetParameter(1, 8, overlapMode, 1);
  cv::Mat mosaic, block;
  cv::Point low, high;
  stitchflags& flags = engine.m_stitchFlags;
  const auto offset = [&](int index, size_t i) {
    engine.StitchingImage_offset(index, frames[0], frames[i - 1], frames[i], low, high, mosaic,
                                 flags);
  };
  offset(0, 1);
  // A growable mosaic is no part of the heap.
  const std::size_t pictures =
      jqstitching::IsGrowable(mosaic) ? 0 : mosaic.total() * mosaic.elemSize();
  offset(1, 2);

  const std::size_t keptEarly = HeapLive();
  const long faultsBefore = MinorFaults();
  for (size_t i = 3; i < 3 + kSteadyFrames; ++i) {
    HeapRestartPeak();
    offset(1, i);
    use.scratchNotPlaced = std::max(use.scratchNotPlaced, Above(HeapPeak(), base + pictures));
  }
  use.faults = static_cast<double>(MinorFaults() - faultsBefore) / kSteadyFrames;
  use.kiloBytesAFrame = static_cast<long>(Above(HeapLive(), keptEarly) / 1024) / kSteadyFrames;

  offset(1, frames.size() - 1);
  HeapRestartPeak();
  cv::Point position(flags.positionX, flags.positionY);
  engine.StitchingImage_imageblend(mosaic, frames.back(), flags, low, high, position, low, high,
                                   position, mosaic, block);
  use.scratchPlaced = Above(HeapPeak(), base + pictures);
  use.kept = Above(HeapLive(), base + pictures);
  use.peakResident = Above(PeakResident(), residentBefore);
  return use;
}

std::string Row(const std::string& label, cv::Size size, const Use& use) {
  const double pixels = size.area();
  return cv::format("| %s | %.1f | %.1f | %.1f | %ld | %.0f | %.0f |\n", label.c_str(),
                    static_cast<double>(use.scratchNotPlaced) / pixels,
                    static_cast<double>(use.scratchPlaced) / pixels,
                    static_cast<double>(use.kept) / pixels, use.kiloBytesAFrame, use.faults,
                    static_cast<double>(use.peakResident) / (1024.0 * 1024.0));
}

}  // namespace

std::string MemoryHeader() {
  return "| engine | scratch B/px, not placed | scratch B/px, placed | kept B/px | growth KiB a "
         "frame | page faults, not placed | peak resident MiB |\n"
         "|---|---:|---:|---:|---:|---:|---:|\n";
}

std::string MemoryRows(cv::Size frame, int overlapMode) {
  const std::string label = cv::format("%dx%d, mode %d", frame.width, frame.height, overlapMode);
  return Row(label + ", library", frame, Measure<JQStitchingAlgorithm>(frame, overlapMode)) +
         Row(label + ", plain", frame, Measure<reference::Algorithm>(frame, overlapMode));
}

}  // namespace jqbench

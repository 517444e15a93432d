#include <benchmark/benchmark.h>

#include <array>

#include "cpu/level.h"
#include "jqimagestitching.h"
#include "reference/stitcher.h"
#include "support/host_record.h"
#include "support/kernel_bench.h"
#include "support/scene.h"

namespace {

bool Placed(const JQImageStitching& stitcher) {
  return stitcher.IsLastFrameAccepted();
}

bool Placed(const reference::Stitcher& stitcher) {
  return stitcher.m_lastFramePlaced;
}

void SetDepth(JQImageStitching& stitcher, int undoDepth) {
  stitcher.SetUndoDepth(undoDepth);
}

// The twin takes nothing back.
void SetDepth(reference::Stitcher&, int) {}

/// Frames by turns: small steps are not placed, a step of 15 % to and fro is.
template <class Stitcher>
void Live(benchmark::State& state, cv::Size size, double step, bool placed, int undoDepth) {
  const jqbench::Scene scene(jqbench::Subject::kTissue, size, 20240507);
  Stitcher stitcher;
  SetDepth(stitcher, undoDepth);
  const cv::Mat start = scene.frame(0, cv::Point());
  _tagJQIMG record = jqbench::HostRecord(start);
  stitcher.Stitching(&record, 0, 1, 8);
  stitcher.Stitching(&record, 0, 1, 8);
  const std::array<cv::Mat, 2> frames{
      scene.frame(1, cv::Point(static_cast<int>(step * size.width), 0)),
      scene.frame(2, cv::Point(0, 0))};
  size_t turn = 0;
  bool asExpected = true;
  for (auto _ : state) {
    record = jqbench::HostRecord(frames[turn]);
    turn ^= 1;
    benchmark::DoNotOptimize(stitcher.Stitching(&record, 0, 1, 8));
    asExpected = asExpected && Placed(stitcher) == placed;
  }
  if (!asExpected) state.SkipWithError("the frames did not take the path to measure");
  jqbench::SetWork(state, size.area(), 3.0 * size.area());
}

bool RegisterLive(const std::string& name, double step, bool placed, int undoDepth = 0) {
  namespace cpu = jqstitching::cpu;
  cv::setNumThreads(1);
  for (const cv::Size size : jqbench::KernelSizes()) {
    const std::string end = "/" + jqbench::Name(size);
    if (undoDepth == 0) {
      benchmark::RegisterBenchmark((name + "/plain" + end).c_str(), [=](benchmark::State& state) {
        Live<reference::Stitcher>(state, size, step, placed, undoDepth);
      })->Unit(benchmark::kMicrosecond);
    }
    for (const cpu::Level level : cpu::SupportedLevels()) {
      benchmark::RegisterBenchmark((name + "/" + cpu::Name(level) + end).c_str(),
                                   [=](benchmark::State& state) {
                                     cpu::Force(level);
                                     Live<JQImageStitching>(state, size, step, placed, undoDepth);
                                     cpu::Force({});
                                   })
          ->Unit(benchmark::kMicrosecond);
    }
  }
  return true;
}

const bool g_notPlaced = RegisterLive("stitcher/frame_not_placed", 0.03, false);
const bool g_placed = RegisterLive("stitcher/frame_placed", 0.15, true);
const bool g_undo = RegisterLive("stitcher/frame_placed_undo5", 0.15, true, 5);

}  // namespace

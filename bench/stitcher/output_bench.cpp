#include <benchmark/benchmark.h>

#include "jqimagestitching.h"
#include "reference/stitcher.h"
#include "support/host_record.h"
#include "support/kernel_bench.h"
#include "support/scene.h"

namespace {

// Trimming and recolouring have no vector level of their own.
template <class Stitcher>
void Trim(benchmark::State& state, cv::Size size) {
  const jqbench::Scene scene(jqbench::Subject::kTissue, size, 20240508);
  Stitcher stitcher;
  const cv::Mat frame = scene.frame(0, cv::Point());
  _tagJQIMG record = jqbench::HostRecord(frame);
  stitcher.Stitching(&record, 0, 1, 8);
  stitcher.Stitching(&record, 0, 1, 8);
  for (auto _ : state) benchmark::DoNotOptimize(stitcher.CutEdge());
  jqbench::SetWork(state, size.area(), 6.0 * size.area());
}

template <class Stitcher>
void Recolour(benchmark::State& state, cv::Size size) {
  const jqbench::Scene scene(jqbench::Subject::kTissue, size, 20240508);
  Stitcher stitcher;
  const cv::Mat frame = scene.frame(0, cv::Point());
  _tagJQIMG record = jqbench::HostRecord(frame);
  stitcher.Stitching(&record, 0, 1, 8);
  for (auto _ : state) {
    benchmark::DoNotOptimize(stitcher.ChangeStitchingBackground(255, 255, 255));
  }
  jqbench::SetWork(state, size.area(), 3.0 * size.area());
}

bool RegisterOutput() {
  for (const cv::Size size : jqbench::KernelSizes()) {
    const std::string end = "/" + jqbench::Name(size);
    const auto add = [&](const std::string& name, void (*run)(benchmark::State&, cv::Size)) {
      benchmark::RegisterBenchmark((name + end).c_str(), [=](benchmark::State& state) {
        run(state, size);
      })->Unit(benchmark::kMicrosecond);
    };
    add("stitcher/trim/plain", Trim<reference::Stitcher>);
    add("stitcher/trim/library", Trim<JQImageStitching>);
    add("stitcher/recolour/plain", Recolour<reference::Stitcher>);
    add("stitcher/recolour/library", Recolour<JQImageStitching>);
  }
  return true;
}

const bool g_registered = RegisterOutput();

}  // namespace

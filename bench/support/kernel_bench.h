#ifndef JQ_BENCH_SUPPORT_KERNEL_BENCH_H
#define JQ_BENCH_SUPPORT_KERNEL_BENCH_H

#include <benchmark/benchmark.h>

#include <cstdint>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "cpu/level.h"
#include "jqstitchingalgorithm.h"
#include "reference/algorithm.h"

namespace jqbench {

/// The sizes every kernel is measured at. The first one is for the tests.
inline const std::vector<cv::Size>& KernelSizes() {
  static const std::vector<cv::Size> sizes{{320, 240}, {640, 480}, {2592, 1944}};
  return sizes;
}

inline std::string Name(cv::Size size) {
  return std::to_string(size.width) + "x" + std::to_string(size.height);
}

/// Registers `body(state, size, engine)` as kernel/level/size for the plain twin
/// and for every vector level of this machine. The return value lets it stand at
/// namespace scope.
template <class Body>
bool RegisterKernel(const std::string& kernel, Body body) {
  cv::setNumThreads(1);
  namespace cpu = jqstitching::cpu;
  for (const cv::Size size : KernelSizes()) {
    const std::string end = "/" + Name(size);
    benchmark::RegisterBenchmark((kernel + "/plain" + end).c_str(), [=](benchmark::State& state) {
      reference::Algorithm engine;
      engine.SetParameter(1, 8, 0, 1);
      body(state, size, engine);
    })->Unit(benchmark::kMicrosecond);
    for (const cpu::Level level : cpu::SupportedLevels()) {
      benchmark::RegisterBenchmark((kernel + "/" + cpu::Name(level) + end).c_str(),
                                   [=](benchmark::State& state) {
                                     cpu::Force(level);
                                     JQStitchingAlgorithm engine;
                                     engine.SetParameter(1, 8, 0, 1);
                                     body(state, size, engine);
                                     cpu::Force({});
                                   })
          ->Unit(benchmark::kMicrosecond);
    }
  }
  return true;
}

/// Tells the bench how much one iteration works on.
inline void SetWork(benchmark::State& state, double items, double bytes) {
  const auto rounds = static_cast<double>(state.iterations());
  state.SetItemsProcessed(static_cast<std::int64_t>(items * rounds));
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes * rounds));
}

}  // namespace jqbench

#endif  // JQ_BENCH_SUPPORT_KERNEL_BENCH_H

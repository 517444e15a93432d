#include "support/frames.h"
#include "support/kernel_bench.h"

namespace {

const bool g_registered = jqbench::RegisterKernel(
    "overlap/motion", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      for (auto _ : state) {
        benchmark::DoNotOptimize(engine.ImageMotionModel(frames.first, frames.second));
      }
      jqbench::SetWork(state, size.area(), 6.0 * size.area());
    });

}  // namespace

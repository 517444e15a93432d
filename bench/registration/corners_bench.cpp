#include "support/frames.h"
#include "support/kernel_bench.h"

namespace {

// Two pictures by turns: nothing remembered of the last one helps.
const bool g_registered = jqbench::RegisterKernel(
    "registration/corners", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      bool odd = false;
      for (auto _ : state) {
        std::vector<cv::Point> corners;
        odd = !odd;
        engine.FindHarrisCornerCoordianteFun(odd ? frames.greyFirst : frames.greySecond, corners);
        benchmark::DoNotOptimize(corners.data());
      }
      jqbench::SetWork(state, size.area(), size.area());
    });

}  // namespace

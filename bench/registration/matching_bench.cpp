#include "support/frames.h"
#include "support/kernel_bench.h"

namespace {

// Items are pairs of descriptors.
const bool g_registered = jqbench::RegisterKernel(
    "registration/matching", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      std::vector<cv::Point> cornersFirst, cornersSecond;
      engine.FindHarrisCornerCoordianteFun(frames.greyFirst, cornersFirst);
      engine.FindHarrisCornerCoordianteFun(frames.greySecond, cornersSecond);
      cv::Mat first, second;
      engine.NoRotaFeatureDescriber(frames.greyFirst, cornersFirst, first);
      engine.NoRotaFeatureDescriber(frames.greySecond, cornersSecond, second);
      for (auto _ : state) {
        std::vector<cv::Point> pairs;
        engine.CalacDistanceIndexFun(first, second, pairs);
        benchmark::DoNotOptimize(pairs.data());
      }
      const double pairs = static_cast<double>(first.rows) * second.rows;
      jqbench::SetWork(state, pairs, pairs * 400);
    });

}  // namespace

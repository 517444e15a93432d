#include "support/kernel_bench.h"

namespace {

// Items are pairs of matches; the size of the frame only spreads them.
const bool g_registered = jqbench::RegisterKernel(
    "registration/consensus", [](benchmark::State& state, cv::Size size, auto& engine) {
      constexpr int kMatches = 480;
      cv::RNG random(7);
      std::vector<cv::Point> first, second;
      for (int i = 0; i < kMatches; ++i) {
        const cv::Point at{random.uniform(0, size.width), random.uniform(0, size.height)};
        const cv::Point error{random.uniform(-5, 6), random.uniform(-5, 6)};
        first.push_back(at);
        second.push_back(at + error - cv::Point(size.width / 5, 3));
      }
      for (auto _ : state) {
        std::vector<cv::Point> inliersFirst, inliersSecond;
        float x = 0, y = 0;
        engine.RansacMatchPointArrayFun(first, second, inliersFirst, inliersSecond, x, y);
        benchmark::DoNotOptimize(x);
      }
      constexpr double kPairs = static_cast<double>(kMatches) * kMatches;
      jqbench::SetWork(state, kPairs, kPairs * 16);
    });

}  // namespace

#include "support/frames.h"
#include "support/kernel_bench.h"

namespace {

// Items are corners.
const bool g_registered = jqbench::RegisterKernel(
    "registration/descriptor", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      std::vector<cv::Point> corners;
      engine.FindHarrisCornerCoordianteFun(frames.greyFirst, corners);
      cv::Mat descriptors;
      for (auto _ : state) engine.NoRotaFeatureDescriber(frames.greyFirst, corners, descriptors);
      const auto count = static_cast<double>(corners.size());
      jqbench::SetWork(state, count, count * 400);  // bytes written: 200 words of 16 bits
    });

}  // namespace

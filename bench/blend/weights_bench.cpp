#include "support/frames.h"
#include "support/kernel_bench.h"
#include "support/old_block.h"

namespace {

const bool g_registered = jqbench::RegisterKernel(
    "blend/weights", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      const cv::Mat old = jqbench::OldBlock(frames.first);
      cv::Mat weight;
      for (auto _ : state) engine.WeightofTwoAreaFun(old, frames.second, weight);
      jqbench::SetWork(state, size.area(), 7.0 * size.area());
    });

}  // namespace

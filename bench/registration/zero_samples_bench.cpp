#include "support/frames.h"
#include "support/kernel_bench.h"

namespace {

const bool g_registered = jqbench::RegisterKernel(
    "registration/zero_samples", [](benchmark::State& state, cv::Size size, auto& engine) {
      cv::Mat frame = jqbench::FramePair(size).first, same;
      for (auto _ : state) engine.JudgeImageChannel(frame, same);
      jqbench::SetWork(state, size.area(), 3.0 * size.area());
    });

}  // namespace

#include "support/frames.h"
#include "support/kernel_bench.h"

namespace {

const bool g_flag = jqbench::RegisterKernel(
    "overlap/flag", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      engine.m_fBrightThreshold = engine.m_fBrightPreset;
      engine.m_fDefinitionThreshold = engine.m_fDefinitionPreset;
      int flag = 0;
      for (auto _ : state) {
        engine.CalacOverLapImageFlages(0, 0, size.height, size.width, frames.first, frames.second,
                                       flag);
        benchmark::DoNotOptimize(flag);
      }
      jqbench::SetWork(state, size.area(), 6.0 * size.area());
    });

const bool g_bright = jqbench::RegisterKernel(
    "overlap/bright", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      float bright = 0;
      for (auto _ : state) {
        engine.CalacOverLapImageBright(frames.first, frames.second, bright);
        benchmark::DoNotOptimize(bright);
      }
      jqbench::SetWork(state, size.area(), 6.0 * size.area());
    });

const bool g_definition = jqbench::RegisterKernel(
    "overlap/definition", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      float definition = 0;
      for (auto _ : state) {
        engine.CalacOverLapImageDefinition(frames.first, frames.second, definition);
        benchmark::DoNotOptimize(definition);
      }
      jqbench::SetWork(state, size.area(), 6.0 * size.area());
    });

}  // namespace

#include <array>

#include "support/frames.h"
#include "support/kernel_bench.h"

namespace {

// A reference frame that stays while new frames come, as in a live run.
const bool g_sameReference = jqbench::RegisterKernel(
    "registration/pair_same_reference", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      const jqbench::Scene scene(jqbench::Subject::kTissue, size, 20240506);
      const std::array<cv::Mat, 2> news{frames.second,
                                        scene.frame(2, cv::Point(size.width / 6, 0))};
      size_t turn = 0;
      for (auto _ : state) {
        int x = 0, y = 0, support = 0;
        engine.ImageMosaicFun(frames.first, news[turn ^= 1], x, y, support);
        benchmark::DoNotOptimize(support);
      }
      jqbench::SetWork(state, size.area(), 6.0 * size.area());
    });

// Both frames are new in every call.
const bool g_newReference = jqbench::RegisterKernel(
    "registration/pair_new_reference", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::Scene scene(jqbench::Subject::kTissue, size, 20240506);
      std::array<cv::Mat, 4> frames;
      for (int i = 0; i < 4; ++i) {
        frames[static_cast<size_t>(i)] = scene.frame(i, cv::Point(i * size.width / 5, 0));
      }
      size_t turn = 0;
      for (auto _ : state) {
        int x = 0, y = 0, support = 0;
        engine.ImageMosaicFun(frames[turn], frames[turn + 1], x, y, support);
        turn = turn == 0 ? 2 : 0;
        benchmark::DoNotOptimize(support);
      }
      jqbench::SetWork(state, size.area(), 6.0 * size.area());
    });

}  // namespace

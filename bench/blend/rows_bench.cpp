#include "blend/kernels/chamfer_row.h"
#include "blend/kernels/content_row.h"
#include "blend/kernels/fuse_row.h"
#include "blend/kernels/weight_row.h"
#include "support/row_bench.h"

namespace {

using jqbench::PaddedRow;

// A few empty pixels, so that the chain along the row has to be solved.
PaddedRow<std::uint8_t> Content(int cols) {
  PaddedRow<std::uint8_t> content(cols, 5);
  for (int c = 0; c < cols; ++c) content.data()[c] = content.data()[c] < 3 ? 0 : 255;
  return content;
}

const bool g_content =
    jqbench::RegisterRow("blend/mark_content", [](benchmark::State& state, int cols) {
      PaddedRow<std::uint8_t> pixels(3 * cols, 1), content(cols, 2);
      for (auto _ : state) {
        benchmark::DoNotOptimize(jqstitching::MarkContent(pixels.data(), 3, content.data(), cols));
      }
      jqbench::SetWork(state, cols, 4.0 * cols);
    });

const bool g_forward =
    jqbench::RegisterRow("blend/distance_forward", [](benchmark::State& state, int cols) {
      PaddedRow<float> up(cols, 1), d(cols, 2);
      PaddedRow<std::uint8_t> content = Content(cols);
      for (auto _ : state) {
        jqstitching::ForwardDistanceRow(up.data(), content.data(), d.data(), cols);
        benchmark::ClobberMemory();
      }
      jqbench::SetWork(state, cols, 9.0 * cols);
    });

const bool g_backward =
    jqbench::RegisterRow("blend/distance_backward", [](benchmark::State& state, int cols) {
      PaddedRow<float> before(cols, 1), down(cols, 2), d(cols, 3);
      for (auto _ : state) {
        jqstitching::BackwardDistanceRow(before.data(), down.data(), d.data(), cols);
        benchmark::ClobberMemory();
      }
      jqbench::SetWork(state, cols, 12.0 * cols);
    });

const bool g_weight = jqbench::RegisterRow("blend/weight", [](benchmark::State& state, int cols) {
  PaddedRow<float> oldDistance(cols, 1), newDistance(cols, 2);
  PaddedRow<std::uint8_t> weight(cols, 3);
  for (auto _ : state) {
    jqstitching::WeightRow(oldDistance.data(), newDistance.data(), 100.0f, weight.data(), cols);
    benchmark::ClobberMemory();
  }
  jqbench::SetWork(state, cols, 9.0 * cols);
});

const bool g_fuse =
    jqbench::RegisterRow("blend/fuse_colour", [](benchmark::State& state, int cols) {
      PaddedRow<std::uint8_t> old(3 * cols, 1), weight(3 * cols, 2), frame(3 * cols, 3);
      for (auto _ : state) {
        jqstitching::FuseColourRow(old.data(), weight.data(), frame.data(), nullptr,
                                   static_cast<size_t>(3 * cols));
        benchmark::ClobberMemory();
      }
      jqbench::SetWork(state, cols, 12.0 * cols);
    });

}  // namespace

#include "cpu/fused.h"
#include "overlap/kernels/blur_rows.h"
#include "support/row_bench.h"

namespace {

using jqbench::PaddedRow;

const float kWeights[jqstitching::kBlurTaps] = {0.05f, 0.25f, 0.40f, 0.25f, 0.05f};

const bool g_down =
    jqbench::RegisterRow("overlap/blur_down", [](benchmark::State& state, int cols) {
      std::vector<PaddedRow<float>> rows;
      const float* starts[jqstitching::kBlurTaps];
      for (unsigned k = 0; k < jqstitching::kBlurTaps; ++k) rows.emplace_back(cols, k);
      for (size_t k = 0; k < jqstitching::kBlurTaps; ++k) starts[k] = rows[k].data();
      PaddedRow<float> out(cols, 9);
      const bool fused = jqstitching::cpu::HasFused();
      for (auto _ : state) {
        jqstitching::BlurDown(starts, kWeights, cols, fused, out.data());
        benchmark::ClobberMemory();
      }
      jqbench::SetWork(state, cols, 24.0 * cols);
    });

const bool g_across =
    jqbench::RegisterRow("overlap/blur_across", [](benchmark::State& state, int cols) {
      PaddedRow<float> row(cols, 1);
      PaddedRow<std::uint8_t> out(cols, 2);
      const bool fused = jqstitching::cpu::HasFused();
      for (auto _ : state) {
        jqstitching::BlurAcross(row.data(), kWeights, cols, fused, out.data());
        benchmark::ClobberMemory();
      }
      jqbench::SetWork(state, cols, 5.0 * cols);
    });

const bool g_difference =
    jqbench::RegisterRow("overlap/difference", [](benchmark::State& state, int cols) {
      PaddedRow<std::uint8_t> first(cols, 1), second(cols, 2), out(cols, 3);
      for (auto _ : state) {
        benchmark::DoNotOptimize(
            jqstitching::DifferenceRow(first.data(), second.data(), cols, out.data()));
      }
      jqbench::SetWork(state, cols, 3.0 * cols);
    });

const bool g_edge = jqbench::RegisterRow("overlap/edge", [](benchmark::State& state, int cols) {
  PaddedRow<std::uint8_t> above(cols, 1), row(cols, 2), below(cols, 3), out(cols, 4);
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        jqstitching::EdgeRow(above.data(), row.data(), below.data(), 5, cols - 5, out.data()));
  }
  jqbench::SetWork(state, cols, 4.0 * cols);
});

}  // namespace

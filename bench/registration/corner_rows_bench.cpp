#include "cpu/fused.h"
#include "registration/kernels/corner_rows.h"
#include "support/row_bench.h"

namespace {

using jqbench::PaddedRow;

const float kWeights[jqstitching::kTaps] = {0.10f, 0.11f, 0.11f, 0.12f, 0.12f,
                                            0.12f, 0.11f, 0.11f, 0.10f};

const bool g_products =
    jqbench::RegisterRow("registration/products", [](benchmark::State& state, int cols) {
      PaddedRow<std::uint8_t> above(cols, 1), row(cols, 2), below(cols, 3);
      PaddedRow<float> xx(cols, 4), yy(cols, 5), xy(cols, 6);
      float* const out[jqstitching::kMaps] = {xx.data(), yy.data(), xy.data()};
      for (auto _ : state) {
        jqstitching::ProductsRow(above.data(), row.data(), below.data(), 1, cols - 1, out);
        benchmark::ClobberMemory();
      }
      jqbench::SetWork(state, cols, 15.0 * cols);
    });

// Two rows at once.
const bool g_down =
    jqbench::RegisterRow("registration/smooth_down", [](benchmark::State& state, int cols) {
      constexpr size_t kRows = jqstitching::kTaps + 1;
      std::vector<PaddedRow<float>> rows;
      const float* starts[kRows];
      for (unsigned k = 0; k < kRows; ++k) rows.emplace_back(cols, k);
      for (size_t k = 0; k < kRows; ++k) starts[k] = rows[k].data();
      PaddedRow<float> upper(cols, 10), lower(cols, 11);
      const bool fused = jqstitching::cpu::HasFused();
      for (auto _ : state) {
        jqstitching::SmoothDown(starts, kWeights, 0, cols, fused, upper.data(), lower.data());
        benchmark::ClobberMemory();
      }
      jqbench::SetWork(state, 2.0 * cols, 48.0 * cols);
    });

const bool g_across =
    jqbench::RegisterRow("registration/smooth_across", [](benchmark::State& state, int cols) {
      PaddedRow<float> row(cols, 1), out(cols, 2);
      const bool fused = jqstitching::cpu::HasFused();
      for (auto _ : state) {
        jqstitching::SmoothAcross(row.data(), kWeights, 4, cols - 4, fused, out.data());
        benchmark::ClobberMemory();
      }
      jqbench::SetWork(state, cols, 8.0 * cols);
    });

const bool g_response =
    jqbench::RegisterRow("registration/response", [](benchmark::State& state, int cols) {
      PaddedRow<float> xx(cols, 1), yy(cols, 2), xy(cols, 3), response(cols, 4);
      for (auto _ : state) {
        benchmark::DoNotOptimize(
            jqstitching::ResponseRow(xx.data(), yy.data(), xy.data(), 0, cols, response.data()));
      }
      jqbench::SetWork(state, cols, 16.0 * cols);
    });

const bool g_maxima =
    jqbench::RegisterRow("registration/maxima", [](benchmark::State& state, int cols) {
      PaddedRow<float> above(cols, 1), row(cols, 2), below(cols, 3);
      std::vector<int> found(static_cast<size_t>(cols) + jqstitching::kRowPadding);
      for (auto _ : state) {
        benchmark::DoNotOptimize(jqstitching::MaximaRow(above.data(), row.data(), below.data(), 1,
                                                        cols - 1, found.data()));
      }
      jqbench::SetWork(state, cols, 12.0 * cols);
    });

}  // namespace

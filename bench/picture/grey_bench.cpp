#include "picture/grey.h"
#include "support/row_bench.h"

namespace {

using jqbench::PaddedRow;

const bool g_grey = jqbench::RegisterRow("picture/grey", [](benchmark::State& state, int cols) {
  PaddedRow<unsigned char> colour(3 * cols, 1), grey(cols, 2);
  for (auto _ : state) {
    jqstitching::GreyRow(colour.data(), cols, grey.data());
    benchmark::ClobberMemory();
  }
  jqbench::SetWork(state, cols, 4.0 * cols);
});

const bool g_halve = jqbench::RegisterRow("picture/halve", [](benchmark::State& state, int cols) {
  PaddedRow<unsigned char> upper(2 * cols, 1), lower(2 * cols, 2), half(cols, 3);
  for (auto _ : state) {
    jqstitching::HalveRows(upper.data(), lower.data(), cols, half.data());
    benchmark::ClobberMemory();
  }
  jqbench::SetWork(state, cols, 5.0 * cols);
});

}  // namespace

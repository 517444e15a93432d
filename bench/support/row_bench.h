#ifndef JQ_BENCH_SUPPORT_ROW_BENCH_H
#define JQ_BENCH_SUPPORT_ROW_BENCH_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "support/kernel_bench.h"

namespace jqbench {

/// Registers `body(state, cols)` as kernel/level/cols for every vector level: one
/// row of a picture, which stays in the nearest cache.
template <class Body>
bool RegisterRow(const std::string& kernel, Body body) {
  namespace cpu = jqstitching::cpu;
  for (const int cols : {320, 2592}) {
    for (const cpu::Level level : cpu::SupportedLevels()) {
      benchmark::RegisterBenchmark(
          (kernel + "/" + cpu::Name(level) + "/row" + std::to_string(cols)).c_str(),
          [=](benchmark::State& state) {
            cpu::Force(level);
            body(state, cols);
            cpu::Force({});
          })
          ->Unit(benchmark::kNanosecond);
    }
  }
  return true;
}

/// A row of `cols` samples with room on both sides for vectors that read or write
/// past its ends.
template <class T>
class PaddedRow {
 public:
  PaddedRow(int cols, unsigned seed) : m_samples(static_cast<size_t>(cols) + 2 * kPad) {
    for (T& sample : m_samples) {
      seed = seed * 1664525u + 1013904223u;
      sample = static_cast<T>(seed >> 24);
    }
  }
  T* data() { return m_samples.data() + kPad; }

 private:
  static constexpr size_t kPad = 128;
  std::vector<T> m_samples;
};

}  // namespace jqbench

#endif  // JQ_BENCH_SUPPORT_ROW_BENCH_H

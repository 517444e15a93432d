#ifndef JQ_BENCH_REPORT_STATISTICS_H
#define JQ_BENCH_REPORT_STATISTICS_H

#include <algorithm>
#include <cstddef>
#include <vector>

namespace jqbench {

/// The value below which `share` of the samples lie (nearest rank); 0 for none.
inline double Percentile(std::vector<double> samples, double share) {
  if (samples.empty()) return 0.0;
  const auto last = static_cast<double>(samples.size() - 1);
  const auto rank = static_cast<std::ptrdiff_t>(share * last + 0.5);
  std::nth_element(samples.begin(), samples.begin() + rank, samples.end());
  return samples[static_cast<std::size_t>(rank)];
}

inline double Median(const std::vector<double>& samples) {
  return Percentile(samples, 0.5);
}

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_STATISTICS_H

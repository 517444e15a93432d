#ifndef JQ_OVERLAP_KERNELS_FLOAT_SUM_H
#define JQ_OVERLAP_KERNELS_FLOAT_SUM_H

#include <cstddef>
#include <cstdint>

namespace jqstitching {

/// A single-precision sum of bytes, added one term at a time. Up to 2^24 every
/// partial sum is exact, so a row's total can be added at once; above, each
/// addition rounds, and the terms are added in order.
class FloatSum {
 public:
  /// `total` is the sum of the `count` bytes at `terms`.
  void add(const std::uint8_t* terms, size_t count, std::uint64_t total) {
    constexpr float kExact = 16777216.0f;
    if (m_sum + static_cast<double>(total) <= kExact) {
      m_sum += static_cast<float>(total);
      return;
    }
    for (size_t i = 0; i < count; ++i) m_sum += static_cast<float>(terms[i]);
  }

  float value() const { return m_sum; }

 private:
  float m_sum = 0;
};

}  // namespace jqstitching

#endif  // JQ_OVERLAP_KERNELS_FLOAT_SUM_H

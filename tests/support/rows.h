#ifndef JQ_TESTS_SUPPORT_ROWS_H
#define JQ_TESTS_SUPPORT_ROWS_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "support/random_source.h"

/// Rows of samples for the direct tests of row kernels. What a kernel may only read is
/// a vector of exactly the samples that the contract lets it read, so that the address
/// sanitizer finds a read beyond; what it writes is a GuardedRow.
namespace rows {

/// From none up.
inline int Width(RandomSource& random, int high) {
  return random.OneIn(12) ? 0 : random.Size(high);
}

/// Bytes of a random kind, extremes included.
inline std::vector<std::uint8_t> Bytes(RandomSource& random, std::size_t count) {
  const int kind = random.Int(0, 5);
  std::vector<std::uint8_t> bytes(count);
  for (std::size_t k = 0; k < count; ++k) {
    const int sample = kind == 0   ? 0
                       : kind == 1 ? 255
                       : kind == 2 ? (k % 2 == 0 ? 0 : 255)
                       : kind == 3 ? random.Int(0, 3)
                                   : random.Int(0, 255);
    bytes[k] = static_cast<std::uint8_t>(sample);
  }
  return bytes;
}

/// Whole numbers from 0 to `high`, or all 0, or all `high`.
inline std::vector<float> Floats(RandomSource& random, std::size_t count, int high) {
  const int kind = random.Int(0, 4);
  std::vector<float> floats(count);
  for (float& f : floats) {
    f = static_cast<float>(kind == 0 ? 0 : kind == 1 ? high : random.Int(0, high));
  }
  return floats;
}

/// Equal bits; else the first differing column.
template <class T>
::testing::AssertionResult Same(const T* actual, const std::vector<T>& expected, int begin = 0) {
  for (std::size_t k = 0; k < expected.size(); ++k) {
    if (std::memcmp(actual + k, &expected[k], sizeof(T)) == 0) continue;
    return ::testing::AssertionFailure()
           << "first mismatch at column " << begin + static_cast<int>(k) << " of [" << begin << ", "
           << begin + static_cast<int>(expected.size()) << "): " << +actual[k] << " instead of "
           << +expected[k];
  }
  return ::testing::AssertionSuccess();
}

/// A row to write `writable` samples to, between samples that must stay.
template <class T>
class GuardedRow {
 public:
  GuardedRow(RandomSource& random, std::size_t writable)
      : m_start(kGuard + static_cast<std::size_t>(random.Int(0, 16))),
        m_writable(writable),
        m_samples(m_start + writable + kGuard) {
    for (T& sample : m_samples) sample = static_cast<T>(random.Int(0, 255));
    m_before = m_samples;
  }
  T* data() { return m_samples.data() + m_start; }

  ::testing::AssertionResult Intact() const {
    for (std::size_t k = 0; k < m_samples.size(); ++k) {
      if (k >= m_start && k < m_start + m_writable) continue;
      if (std::memcmp(&m_samples[k], &m_before[k], sizeof(T)) == 0) continue;
      return ::testing::AssertionFailure()
             << "sample " << static_cast<long>(k) - static_cast<long>(m_start)
             << " was written, beside a row of " << m_writable;
    }
    return ::testing::AssertionSuccess();
  }

 private:
  static constexpr std::size_t kGuard = 300;
  std::size_t m_start, m_writable;
  std::vector<T> m_samples, m_before;
};

}  // namespace rows

#endif  // JQ_TESTS_SUPPORT_ROWS_H

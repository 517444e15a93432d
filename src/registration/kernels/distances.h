#ifndef JQ_REGISTRATION_KERNELS_DISTANCES_H
#define JQ_REGISTRATION_KERNELS_DISTANCES_H

#include <cstddef>
#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace jqstitching {

/// Descriptors of 16-bit bins laid out so that one lane sums the distance to one
/// descriptor: bins 2c and 2c + 1 of all descriptors stand together, padded to
/// whole vectors of any level.
class PairedDescriptors {
 public:
  PairedDescriptors() = default;
  /// `descriptors` is a `CV_16U` matrix, one descriptor a row, or empty.
  explicit PairedDescriptors(const cv::Mat& descriptors);

  size_t count() const { return m_count; }
  size_t stride() const { return m_stride; }
  const cv::Mat& rows() const { return m_rows; }
  const std::int16_t* pairs() const { return m_pairs.data(); }
  /// Largest sum of a descriptor's squared bins; the largest possible value where a
  /// bin does not fit into 15 bits.
  std::uint64_t largestSquare() const { return m_largestSquare; }

 private:
  size_t m_count = 0, m_stride = 0;
  std::uint64_t m_largestSquare = 0;
  cv::Mat m_rows;
  std::vector<std::int16_t> m_pairs;
};

/// Whether every squared distance between the two sets fits into 31 bits.
bool FitsWholeNumbers(const PairedDescriptors& first, const PairedDescriptors& second);

/// distances[k] = squared distance of `wanted` (`bins` values) to descriptor k, a
/// whole number. `distances` has room for stride() values; those past count() do
/// not count.
void WholeDistances(const PairedDescriptors& descriptors, const std::uint16_t* wanted, size_t bins,
                    std::int32_t* distances);

/// Index of the first of the least values, that value and the least of the others.
struct Nearest {
  size_t index;
  std::int32_t distance;
  std::int32_t runnerUp;
};

/// `count` is at least 2.
Nearest FindNearest(const std::int32_t* distances, size_t count);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_KERNELS_DISTANCES_H

#ifndef JQ_REGISTRATION_DISTANCES_H
#define JQ_REGISTRATION_DISTANCES_H

#include <cstddef>
#include <opencv2/core.hpp>
#include <vector>

namespace jqstitching {

/// Descriptors laid out so that one lane sums the distance to one descriptor:
/// column c of all descriptors stands together, padded to whole vectors.
class TransposedDescriptors {
 public:
  TransposedDescriptors() = default;
  /// `descriptors` is a `CV_32F` matrix, one descriptor a row.
  explicit TransposedDescriptors(const cv::Mat& descriptors);

  size_t count() const { return m_count; }
  size_t columns() const { return m_columns; }
  /// count() rounded up to whole vectors of any level.
  size_t stride() const { return m_stride; }
  const float* data() const { return m_values.data(); }

 private:
  size_t m_count = 0, m_columns = 0, m_stride = 0;
  std::vector<float> m_values;
};

/// distances[k] = squared distance of `wanted` to descriptor k over the first
/// `columns` columns: squares of single-precision differences, added one by one,
/// first column to last, in single precision. `distances` has room for stride()
/// values; those past count() do not count.
void SquaredDistances(const TransposedDescriptors& descriptors, const float* wanted, size_t columns,
                      float* distances);

/// The nearest descriptor and the runner-up of a row of distances.
struct Nearest {
  size_t index;    ///< the first of equally near ones
  float distance;  ///< its squared distance
  float runnerUp;  ///< least squared distance of the others; its own when it is alone
};

/// `count` is at least 1 and the distances are finite.
Nearest FindNearest(const float* distances, size_t count);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_DISTANCES_H

#include "registration/distances.h"

#include <algorithm>
#include <limits>

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "registration/distances.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>

#include "cpu/dispatch.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using F32 = hn::ScalableTag<float>;

// kVectors neighbouring vectors of descriptors from `values` on.
template <int kVectors>
HWY_INLINE void Distances(const float* values, size_t stride, const float* wanted, size_t columns,
                          float* distances) {
  const F32 d;
  const size_t lanes = hn::Lanes(d);
  hn::Vec<F32> sums[kVectors];
  for (int v = 0; v < kVectors; ++v) sums[v] = hn::Zero(d);
  for (size_t c = 0; c < columns; ++c, values += stride) {
    const auto value = hn::Set(d, wanted[c]);
    for (int v = 0; v < kVectors; ++v) {
      const auto difference = hn::Sub(value, hn::LoadU(d, values + static_cast<size_t>(v) * lanes));
      sums[v] = hn::Add(sums[v], hn::Mul(difference, difference));
    }
  }
  for (int v = 0; v < kVectors; ++v) {
    hn::StoreU(sums[v], d, distances + static_cast<size_t>(v) * lanes);
  }
}

void DistancesKernel(const float* values, size_t count, size_t stride, const float* wanted,
                     size_t columns, float* distances) {
  constexpr int kBlock = 8;
  const size_t lanes = hn::Lanes(F32());
  size_t k = 0;
  for (; k + kBlock * lanes <= stride; k += kBlock * lanes) {
    Distances<kBlock>(values + k, stride, wanted, columns, distances + k);
  }
  for (; k < count; k += lanes) {
    Distances<1>(values + k, stride, wanted, columns, distances + k);
  }
}

float LeastKernel(const float* distances, size_t count) {
  const F32 d;
  const size_t lanes = hn::Lanes(d);
  auto least = hn::Set(d, std::numeric_limits<float>::infinity());
  size_t i = 0;
  for (; i + lanes <= count; i += lanes) least = hn::Min(least, hn::LoadU(d, distances + i));
  float value = hn::GetLane(hn::MinOfLanes(d, least));
  for (; i < count; ++i) value = std::min(value, distances[i]);
  return value;
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(DistancesKernel);
HWY_EXPORT(LeastKernel);

TransposedDescriptors::TransposedDescriptors(const cv::Mat& descriptors)
    : m_count(static_cast<size_t>(descriptors.rows)),
      m_columns(static_cast<size_t>(descriptors.cols)) {
  constexpr size_t kWidest = 16;
  m_stride = (m_count + kWidest - 1) / kWidest * kWidest;
  m_values.assign(m_stride * m_columns, 0.0f);
  for (size_t k = 0; k < m_count; ++k) {
    const float* row = descriptors.ptr<float>(static_cast<int>(k));
    for (size_t c = 0; c < m_columns; ++c) m_values[c * m_stride + k] = row[c];
  }
}

void SquaredDistances(const TransposedDescriptors& descriptors, const float* wanted, size_t columns,
                      float* distances) {
  JQ_DISPATCH(DistancesKernel)
  (descriptors.data(), descriptors.count(), descriptors.stride(), wanted, columns, distances);
}

Nearest FindNearest(const float* distances, size_t count) {
  const auto leastOf = JQ_DISPATCH(LeastKernel);
  const float least = leastOf(distances, count);
  const auto index =
      static_cast<size_t>(std::find(distances, distances + count, least) - distances);
  if (count == 1) return {index, least, least};
  const float others =
      std::min(leastOf(distances, index), leastOf(distances + index + 1, count - index - 1));
  return {index, least, others};
}

}  // namespace jqstitching
#endif  // HWY_ONCE

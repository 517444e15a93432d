#include "registration/kernels/distances.h"

#include <algorithm>
#include <cstring>
#include <limits>

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "registration/kernels/distances.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>

#include "cpu/dispatch.h"
#include "cpu/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using I32 = Vectors<std::int32_t>;

#if HWY_TARGET != HWY_SCALAR
using I16 = Vectors<std::int16_t>;

// Adds the squared differences of two bins for one vector of descriptors. Which of
// them are in which of the two sums differs from level to level; Store joins them.
HWY_INLINE void AddPairs(const std::int16_t* pairs, hn::Vec<I16> wanted, hn::Vec<I32>& sums,
                         hn::Vec<I32>& others) {
  const auto difference = hn::Sub(wanted, hn::LoadU(I16(), pairs));
  sums = hn::ReorderWidenMulAccumulate(I32(), difference, difference, sums, others);
}

// 32-bit lane k holds the products of 16-bit lanes 2 k and 2 k + 1: one descriptor.
HWY_INLINE void Store(hn::Vec<I32> sums, hn::Vec<I32> others, std::int32_t* distances) {
  hn::StoreU(hn::RearrangeToOddPlusEven(sums, others), I32(), distances);
}

// One vector of descriptors from `pairs` on.
HWY_INLINE void OneVector(const std::int16_t* pairs, size_t stride, const std::int32_t* wanted,
                          size_t count, std::int32_t* distances) {
  const I32 d;
  auto sums = hn::Zero(d), others = hn::Zero(d);
  for (size_t c = 0; c < count; ++c, pairs += 2 * stride) {
    AddPairs(pairs, hn::BitCast(I16(), hn::Set(d, wanted[c])), sums, others);
  }
  Store(sums, others, distances);
}

// Four neighbouring ones, whose sums do not wait for each other.
HWY_INLINE void FourVectors(const std::int16_t* pairs, size_t stride, const std::int32_t* wanted,
                            size_t count, std::int32_t* distances) {
  const I32 d;
  const size_t lanes = hn::Lanes(d);
  auto sums0 = hn::Zero(d), sums1 = hn::Zero(d), sums2 = hn::Zero(d), sums3 = hn::Zero(d);
  auto others0 = hn::Zero(d), others1 = hn::Zero(d), others2 = hn::Zero(d), others3 = hn::Zero(d);
  for (size_t c = 0; c < count; ++c, pairs += 2 * stride) {
    const auto value = hn::BitCast(I16(), hn::Set(d, wanted[c]));
    AddPairs(pairs, value, sums0, others0);
    AddPairs(pairs + 2 * lanes, value, sums1, others1);
    AddPairs(pairs + 4 * lanes, value, sums2, others2);
    AddPairs(pairs + 6 * lanes, value, sums3, others3);
  }
  Store(sums0, others0, distances);
  Store(sums1, others1, distances + lanes);
  Store(sums2, others2, distances + 2 * lanes);
  Store(sums3, others3, distances + 3 * lanes);
}
#endif

// `wanted` holds `count` pairs of bins.
void DistancesKernel(const std::int16_t* pairs, size_t descriptors, size_t stride,
                     const std::int32_t* wanted, size_t count, std::int32_t* distances) {
#if HWY_TARGET != HWY_SCALAR
  const size_t lanes = hn::Lanes(I32());
  size_t k = 0;
  for (; k + 4 * lanes <= stride; k += 4 * lanes) {
    FourVectors(pairs + 2 * k, stride, wanted, count, distances + k);
  }
  for (; k < descriptors; k += lanes) {
    OneVector(pairs + 2 * k, stride, wanted, count, distances + k);
  }
#else
  std::fill_n(distances, descriptors, 0);
  for (size_t c = 0; c < count; ++c, pairs += 2 * stride) {
    std::int16_t value[2];
    std::memcpy(value, wanted + c, sizeof value);
    for (size_t k = 0; k < descriptors; ++k) {
      const int a = value[0] - pairs[2 * k], b = value[1] - pairs[2 * k + 1];
      distances[k] += a * a + b * b;
    }
  }
#endif
}

std::int32_t LeastKernel(const std::int32_t* values, size_t count) {
  const I32 d;
  const size_t lanes = hn::Lanes(d);
  auto least = hn::Set(d, std::numeric_limits<std::int32_t>::max());
  size_t i = 0;
  for (; i + lanes <= count; i += lanes) least = hn::Min(least, hn::LoadU(d, values + i));
  std::int32_t value = hn::GetLane(hn::MinOfLanes(d, least));
  for (; i < count; ++i) value = std::min(value, values[i]);
  return value;
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(DistancesKernel);
HWY_EXPORT(LeastKernel);

PairedDescriptors::PairedDescriptors(const cv::Mat& descriptors)
    : m_count(static_cast<size_t>(descriptors.rows)), m_rows(descriptors) {
  constexpr size_t kWidest = cpu::kVectorBytes / sizeof(std::int32_t);
  m_stride = (m_count + kWidest - 1) / kWidest * kWidest;
  const auto bins = static_cast<size_t>(descriptors.cols);
  m_pairs.assign(m_stride * 2 * ((bins + 1) / 2), 0);
  for (size_t k = 0; k < m_count; ++k) {
    const auto* row = descriptors.ptr<std::uint16_t>(static_cast<int>(k));
    std::uint64_t square = 0;
    bool fits = true;
    for (size_t c = 0; c < bins; ++c) {
      fits = fits && row[c] <= std::numeric_limits<std::int16_t>::max();
      square += std::uint64_t{row[c]} * row[c];
      m_pairs[c / 2 * 2 * m_stride + 2 * k + c % 2] = static_cast<std::int16_t>(row[c]);
    }
    m_largestSquare =
        fits ? std::max(m_largestSquare, square) : std::numeric_limits<std::uint32_t>::max();
  }
}

bool FitsWholeNumbers(const PairedDescriptors& first, const PairedDescriptors& second) {
  // Bins are not negative, so a squared distance is at most the sum of the squares.
  constexpr std::uint64_t kLimit = std::numeric_limits<std::int32_t>::max();
  return first.largestSquare() + second.largestSquare() <= kLimit;
}

void WholeDistances(const PairedDescriptors& descriptors, const std::uint16_t* wanted, size_t bins,
                    std::int32_t* distances) {
  std::vector<std::int32_t> pairs((bins + 1) / 2, 0);
  if (bins != 0) std::memcpy(pairs.data(), wanted, bins * sizeof *wanted);
  JQ_DISPATCH(DistancesKernel)
  (descriptors.pairs(), descriptors.count(), descriptors.stride(), pairs.data(), pairs.size(),
   distances);
}

Nearest FindNearest(const std::int32_t* distances, size_t count) {
  const auto leastOf = JQ_DISPATCH(LeastKernel);
  const std::int32_t least = leastOf(distances, count);
  const auto index =
      static_cast<size_t>(std::find(distances, distances + count, least) - distances);
  const std::int32_t others =
      std::min(leastOf(distances, index), leastOf(distances + index + 1, count - index - 1));
  return {index, least, others};
}

}  // namespace jqstitching
#endif  // HWY_ONCE

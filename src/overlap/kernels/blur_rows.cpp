#include "overlap/kernels/blur_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "overlap/kernels/blur_rows.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>

#include "cpu/dispatch.h"
#include "cpu/fused-inl.h"
#include "cpu/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using F32 = Vectors<float>;
using I32 = hn::RebindToSigned<F32>;
using Bytes = hn::Rebind<std::uint8_t, F32>;

void WidenKernel(const std::uint8_t* samples, int cols, float* out) {
  const int lanes = static_cast<int>(hn::Lanes(F32()));
  int j = 0;
  for (; j + lanes <= cols; j += lanes) {
    const auto whole = hn::PromoteTo(I32(), hn::LoadU(Bytes(), samples + j));
    hn::StoreU(hn::ConvertTo(F32(), whole), F32(), out + j);
  }
  for (; j < cols; ++j) out[j] = static_cast<float>(samples[j]);
}

// Rounded sums of one vector of columns; sample k of column j is at sources[k] + j.
template <bool kFused>
HWY_INLINE hn::Vec<I32> BlurVector(const float* const* sources, const float* taps, int j) {
  const F32 d;
  auto sum = hn::Mul(hn::Set(d, taps[0]), hn::LoadU(d, sources[0] + j));
  for (int k = 1; k < kBlurTaps; ++k) {
    sum = AddTap<kFused>(sum, hn::Set(d, taps[k]), hn::LoadU(d, sources[k] + j));
  }
  return hn::Min(hn::NearestInt(sum), hn::Set(I32(), 255));
}

template <bool kFused>
HWY_INLINE void Down(const float* const* sources, const float* taps, int cols, float* out) {
  const F32 d;
  for (int j = 0; j < cols; j += static_cast<int>(hn::Lanes(d))) {
    hn::StoreU(hn::ConvertTo(d, BlurVector<kFused>(sources, taps, j)), d, out + j);
  }
}

template <bool kFused>
HWY_INLINE void Across(const float* const* sources, const float* taps, int cols,
                       std::uint8_t* out) {
  for (int j = 0; j < cols; j += static_cast<int>(hn::Lanes(F32()))) {
    hn::StoreU(hn::DemoteTo(Bytes(), BlurVector<kFused>(sources, taps, j)), Bytes(), out + j);
  }
}

void DownKernel(const float* const* rows, const float* taps, int cols, bool fused, float* out) {
  if (fused && kNativeFma) {
    Down<kNativeFma>(rows, taps, cols, out);
  } else {
    Down<false>(rows, taps, cols, out);
  }
}

void AcrossKernel(const float* const* sources, const float* taps, int cols, bool fused,
                  std::uint8_t* out) {
  if (fused && kNativeFma) {
    Across<kNativeFma>(sources, taps, cols, out);
  } else {
    Across<false>(sources, taps, cols, out);
  }
}

std::uint64_t DifferenceKernel(const std::uint8_t* first, const std::uint8_t* second, int cols,
                               std::uint8_t* out) {
  std::uint64_t sum = 0;
  int j = 0;
#if HWY_TARGET != HWY_SCALAR
  const Vectors<std::uint8_t> d;
  const hn::Repartition<std::uint64_t, decltype(d)> d64;
  const int lanes = static_cast<int>(hn::Lanes(d));
  auto sums = hn::Zero(d64);
  for (; j + lanes <= cols; j += lanes) {
    const auto a = hn::LoadU(d, first + j), b = hn::LoadU(d, second + j);
    const auto difference = hn::Or(hn::SaturatedSub(a, b), hn::SaturatedSub(b, a));
    hn::StoreU(difference, d, out + j);
    sums = hn::Add(sums, hn::SumsOf8(difference));
  }
  sum = hn::GetLane(hn::SumOfLanes(d64, sums));
#endif
  for (; j < cols; ++j) {
    out[j] = static_cast<std::uint8_t>(std::abs(first[j] - second[j]));
    sum += out[j];
  }
  return sum;
}

constexpr int kWeakest = 10;

StrongResponses EdgeKernel(const std::uint8_t* above, const std::uint8_t* row,
                           const std::uint8_t* below, int begin, int end, std::uint8_t* out) {
  StrongResponses strong;
  int j = begin;
#if HWY_TARGET != HWY_SCALAR
  const Vectors<std::int16_t> d;
  const hn::Rebind<std::uint8_t, decltype(d)> bytes;
  const hn::RepartitionToWide<decltype(d)> wide;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto weakest = hn::Set(d, std::int16_t{kWeakest});
  const auto one = hn::Set(d, std::int16_t{1});
  // Each total is the sum of all lanes of two vectors: which products are in which of
  // them differs from level to level.
  auto sums = hn::Zero(wide), otherSums = hn::Zero(wide);
  auto counts = hn::Zero(wide), otherCounts = hn::Zero(wide);
  const auto columnAt = [&](int c) HWY_ATTR {
    const auto middle = hn::PromoteTo(d, hn::LoadU(bytes, row + c));
    return hn::Add(hn::Add(hn::PromoteTo(d, hn::LoadU(bytes, above + c)),
                           hn::PromoteTo(d, hn::LoadU(bytes, below + c))),
                   hn::Add(middle, middle));
  };
  for (; j + lanes <= end; j += lanes) {
    const auto middle = columnAt(j);
    const auto sides = hn::Add(columnAt(j - 1), columnAt(j + 1));
    const auto response =
        hn::Min(hn::Sub(hn::Add(middle, middle), sides), hn::Set(d, std::int16_t{255}));
    const auto kept = hn::IfThenElseZero(hn::Gt(response, weakest), response);
    hn::StoreU(hn::DemoteTo(bytes, kept), bytes, out + j);
    sums = hn::ReorderWidenMulAccumulate(wide, kept, one, sums, otherSums);
    counts = hn::ReorderWidenMulAccumulate(wide, hn::Min(kept, one), one, counts, otherCounts);
  }
  strong.sum =
      static_cast<std::uint64_t>(hn::GetLane(hn::SumOfLanes(wide, hn::Add(sums, otherSums))));
  strong.count = hn::GetLane(hn::SumOfLanes(wide, hn::Add(counts, otherCounts)));
#endif
  for (; j < end; ++j) {
    const auto column = [&](int c) { return above[c] + 2 * row[c] + below[c]; };
    const int response = std::min(2 * column(j) - column(j - 1) - column(j + 1), 255);
    out[j] = static_cast<std::uint8_t>(response > kWeakest ? response : 0);
    strong.sum += out[j];
    strong.count += out[j] != 0 ? 1 : 0;
  }
  return strong;
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(WidenKernel);
HWY_EXPORT(DownKernel);
HWY_EXPORT(AcrossKernel);
HWY_EXPORT(DifferenceKernel);
HWY_EXPORT(EdgeKernel);

void WidenRow(const std::uint8_t* samples, int cols, float* out) {
  JQ_DISPATCH(WidenKernel)(samples, cols, out);
}

void BlurDown(const float* const rows[kBlurTaps], const float* taps, int cols, bool fused,
              float* out) {
  JQ_DISPATCH(DownKernel)(rows, taps, cols, fused, out);
}

void BlurAcross(const float* row, const float* taps, int cols, bool fused, std::uint8_t* out) {
  const float* sources[kBlurTaps];
  for (int k = 0; k < kBlurTaps; ++k) sources[k] = row + k - kBlurTaps / 2;
  JQ_DISPATCH(AcrossKernel)(sources, taps, cols, fused, out);
}

std::uint64_t DifferenceRow(const std::uint8_t* first, const std::uint8_t* second, int cols,
                            std::uint8_t* out) {
  return JQ_DISPATCH(DifferenceKernel)(first, second, cols, out);
}

StrongResponses EdgeRow(const std::uint8_t* above, const std::uint8_t* row,
                        const std::uint8_t* below, int begin, int end, std::uint8_t* out) {
  return JQ_DISPATCH(EdgeKernel)(above, row, below, begin, end, out);
}

}  // namespace jqstitching
#endif  // HWY_ONCE

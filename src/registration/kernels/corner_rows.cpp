#include "registration/kernels/corner_rows.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "registration/kernels/corner_rows.cpp"
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

void ProductsKernel(const std::uint8_t* above, const std::uint8_t* row, const std::uint8_t* below,
                    int begin, int end, float* const* out) {
  int j = begin;
#if HWY_TARGET != HWY_SCALAR
  const Vectors<std::int16_t> d16;
  const hn::Rebind<std::uint8_t, decltype(d16)> d8;
  const hn::Half<decltype(d16)> h16;
  const hn::RepartitionToWide<decltype(d16)> d32;
  const F32 df;
  const int lanes = static_cast<int>(hn::Lanes(d16));
  const int half = lanes / 2;
  const auto load = [&](const std::uint8_t* p)
                        HWY_ATTR { return hn::PromoteTo(d16, hn::LoadU(d8, p)); };
  // The products of two 8-bit magnitudes: the low 16 bits, read as unsigned.
  const auto store = [&](hn::Vec<decltype(d16)> a, hn::Vec<decltype(d16)> b, float* to) HWY_ATTR {
    const hn::RebindToUnsigned<decltype(h16)> u16;
    const hn::RebindToUnsigned<decltype(d16)> du16;
    const auto product = hn::BitCast(du16, hn::Mul(a, b));
    hn::StoreU(hn::ConvertTo(df, hn::PromoteTo(d32, hn::LowerHalf(u16, product))), df, to);
    hn::StoreU(hn::ConvertTo(df, hn::PromoteTo(d32, hn::UpperHalf(u16, product))), df, to + half);
  };
  // Column end is read, so the last load starts at end + 1 - lanes at the most.
  for (; j + lanes <= end; j += lanes) {
    const auto aw = load(above + j - 1), an = load(above + j), ae = load(above + j + 1);
    const auto rw = load(row + j - 1), re = load(row + j + 1);
    const auto bw = load(below + j - 1), bn = load(below + j), be = load(below + j + 1);
    const auto west = hn::Add(hn::Add(aw, bw), hn::Add(rw, rw));
    const auto east = hn::Add(hn::Add(ae, be), hn::Add(re, re));
    const auto north = hn::Add(hn::Add(aw, ae), hn::Add(an, an));
    const auto south = hn::Add(hn::Add(bw, be), hn::Add(bn, bn));
    const auto gx = hn::ShiftRight<2>(hn::Abs(hn::Sub(east, west)));
    const auto gy = hn::ShiftRight<2>(hn::Abs(hn::Sub(south, north)));
    store(gx, gx, out[0] + j);
    store(gy, gy, out[1] + j);
    store(gx, gy, out[2] + j);
  }
#endif
  for (; j < end; ++j) {
    const int west = above[j - 1] + 2 * row[j - 1] + below[j - 1];
    const int east = above[j + 1] + 2 * row[j + 1] + below[j + 1];
    const int north = above[j - 1] + 2 * above[j] + above[j + 1];
    const int south = below[j - 1] + 2 * below[j] + below[j + 1];
    const int gx = std::abs(east - west) >> 2, gy = std::abs(south - north) >> 2;
    out[0][j] = static_cast<float>(gx * gx);
    out[1][j] = static_cast<float>(gy * gy);
    out[2][j] = static_cast<float>(gx * gy);
  }
}

// The first product is added to zero, which changes nothing.
template <bool kFused>
HWY_INLINE void Down(const float* const* rows, const float* taps, int begin, int end, float* upper,
                     float* lower) {
  const F32 d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  for (int j = begin; j < end; j += lanes) {
    auto sample = hn::LoadU(d, rows[0] + j);
    auto tap = hn::Set(d, taps[0]);
    auto upperSum = hn::Mul(tap, sample);
    sample = hn::LoadU(d, rows[1] + j);
    auto lowerSum = hn::Mul(tap, sample);
    for (int k = 1; k < kTaps; ++k) {
      tap = hn::Set(d, taps[k]);
      upperSum = AddTap<kFused>(upperSum, tap, sample);
      sample = hn::LoadU(d, rows[k + 1] + j);
      lowerSum = AddTap<kFused>(lowerSum, tap, sample);
    }
    hn::StoreU(upperSum, d, upper + j);
    hn::StoreU(lowerSum, d, lower + j);
  }
}

template <bool kFused>
HWY_INLINE void Across(const float* row, const float* taps, int begin, int end, float* out) {
  const F32 d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  for (int j = begin; j < end; j += lanes) {
    const float* first = row + j - kTaps / 2;
    auto sum = hn::Mul(hn::Set(d, taps[0]), hn::LoadU(d, first));
    for (int k = 1; k < kTaps; ++k) {
      sum = AddTap<kFused>(sum, hn::Set(d, taps[k]), hn::LoadU(d, first + k));
    }
    hn::StoreU(sum, d, out + j);
  }
}

void DownKernel(const float* const* rows, const float* taps, int begin, int end, bool fused,
                float* upper, float* lower) {
  if (fused && kNativeFma) {
    Down<kNativeFma>(rows, taps, begin, end, upper, lower);
  } else {
    Down<false>(rows, taps, begin, end, upper, lower);
  }
}

void AcrossKernel(const float* row, const float* taps, int begin, int end, bool fused, float* out) {
  if (fused && kNativeFma) {
    Across<kNativeFma>(row, taps, begin, end, out);
  } else {
    Across<false>(row, taps, begin, end, out);
  }
}

double ResponseKernel(const float* xx, const float* yy, const float* xy, int begin, int end,
                      float* response) {
  constexpr double kTraceWeight = -0.007;
  double sum = 0;
  int j = begin;
#if HWY_TARGET != HWY_SCALAR
  const F32 d;
  const hn::Half<F32> h;
  const Vectors<double> d64;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto weight = hn::Set(d64, kTraceWeight);
  auto sums = hn::Zero(d64);
  const auto harris = [&](hn::Vec<hn::Half<F32>> det, hn::Vec<hn::Half<F32>> trace) HWY_ATTR {
    const auto t = hn::PromoteTo(d64, trace);
    return hn::DemoteTo(h, hn::Add(hn::PromoteTo(d64, det), hn::Mul(hn::Mul(t, weight), t)));
  };
  for (; j + lanes <= end; j += lanes) {
    const auto a = hn::LoadU(d, xx + j), b = hn::LoadU(d, yy + j), c = hn::LoadU(d, xy + j);
    const auto det = hn::Sub(hn::Mul(a, b), hn::Mul(c, c));
    const auto trace = hn::Add(a, b);
    const auto low = harris(hn::LowerHalf(h, det), hn::LowerHalf(h, trace));
    const auto high = harris(hn::UpperHalf(h, det), hn::UpperHalf(h, trace));
    const auto kept = hn::ZeroIfNegative(hn::Combine(d, high, low));
    hn::StoreU(kept, d, response + j);
    sums = hn::Add(sums, hn::Add(hn::PromoteTo(d64, hn::LowerHalf(h, kept)),
                                 hn::PromoteTo(d64, hn::UpperHalf(h, kept))));
  }
  sum = hn::GetLane(hn::SumOfLanes(d64, sums));
#endif
  for (; j < end; ++j) {
    const double det = xx[j] * yy[j] - xy[j] * xy[j];
    const double trace = xx[j] + yy[j];
    const auto value = static_cast<float>(det + (trace * kTraceWeight) * trace);
    response[j] = value > 0 ? value : 0.0f;
    sum += response[j];
  }
  return sum;
}

size_t MaximaKernel(const float* above, const float* row, const float* below, int begin, int end,
                    int* found) {
  size_t count = 0;
  int j = begin;
#if HWY_TARGET != HWY_SCALAR
  const F32 d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  for (; j + lanes <= end; j += lanes) {
    const auto value = hn::LoadU(d, row + j);
    const auto sides = hn::Max(hn::LoadU(d, row + j - 1), hn::LoadU(d, row + j + 1));
    const auto up = hn::Max(hn::LoadU(d, above + j),
                            hn::Max(hn::LoadU(d, above + j - 1), hn::LoadU(d, above + j + 1)));
    const auto down = hn::Max(hn::LoadU(d, below + j),
                              hn::Max(hn::LoadU(d, below + j - 1), hn::LoadU(d, below + j + 1)));
    const auto largest = hn::Max(sides, hn::Max(up, down));
    const auto maximum = hn::And(hn::Ge(value, largest), hn::Gt(value, hn::Zero(d)));
    if (hn::AllFalse(d, maximum)) continue;
    static_assert(cpu::kVectorBytes / sizeof(float) <= 16, "more lanes than two bytes of bits");
    std::uint8_t bits[cpu::kVectorBytes] = {};
    hn::StoreMaskBits(d, maximum, bits);
    unsigned mask = bits[0] | (static_cast<unsigned>(bits[1]) << 8);
    mask &= (1u << lanes) - 1;
    for (; mask != 0; mask &= mask - 1) {
      found[count++] = j + static_cast<int>(hwy::Num0BitsBelowLS1Bit_Nonzero32(mask));
    }
  }
#endif
  for (; j < end; ++j) {
    const float largest = std::max({above[j - 1], above[j], above[j + 1], row[j - 1], row[j + 1],
                                    below[j - 1], below[j], below[j + 1]});
    if (row[j] >= largest && row[j] > 0) found[count++] = j;
  }
  return count;
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(ProductsKernel);
HWY_EXPORT(DownKernel);
HWY_EXPORT(AcrossKernel);
HWY_EXPORT(ResponseKernel);
HWY_EXPORT(MaximaKernel);

void ProductsRow(const std::uint8_t* above, const std::uint8_t* row, const std::uint8_t* below,
                 int begin, int end, float* const out[kMaps]) {
  JQ_DISPATCH(ProductsKernel)(above, row, below, begin, end, out);
}

void SmoothDown(const float* const rows[kTaps + 1], const float* taps, int begin, int end,
                bool fused, float* upper, float* lower) {
  JQ_DISPATCH(DownKernel)(rows, taps, begin, end, fused, upper, lower);
}

void SmoothAcross(const float* row, const float* taps, int begin, int end, bool fused, float* out) {
  JQ_DISPATCH(AcrossKernel)(row, taps, begin, end, fused, out);
}

double ResponseRow(const float* xx, const float* yy, const float* xy, int begin, int end,
                   float* response) {
  return JQ_DISPATCH(ResponseKernel)(xx, yy, xy, begin, end, response);
}

size_t MaximaRow(const float* above, const float* row, const float* below, int begin, int end,
                 int* found) {
  return JQ_DISPATCH(MaximaKernel)(above, row, below, begin, end, found);
}

}  // namespace jqstitching
#endif  // HWY_ONCE

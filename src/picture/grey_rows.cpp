#include <cstdint>

#include "picture/grey.h"

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "picture/grey_rows.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>

#include "cpu/dispatch.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

constexpr int kShift = 15;
constexpr std::int16_t kWeight0 = 9798, kWeight1 = 19235, kWeight2 = 3735;
constexpr std::int16_t kRound = 1 << (kShift - 1);

#if HWY_TARGET != HWY_SCALAR
using U8 = hn::ScalableTag<std::uint8_t>;
using HalfU8 = hn::Half<U8>;
using I16 = hn::ScalableTag<std::int16_t>;
using I32 = hn::ScalableTag<std::int32_t>;

// Weighted sums of the pixels whose three samples are given as 16-bit lanes. The
// interleaving and the narrowing both work within blocks of 128 bits, so the
// pixels come out in order.
template <class V>
HWY_INLINE V WeightedSum(V p0, V p1, V p2) {
  const I16 d16;
  const I32 d32;
  const auto pair01 = hn::BitCast(
      d16, hn::Set(d32, static_cast<std::int32_t>(kWeight0 | (std::int32_t{kWeight1} << 16))));
  const auto pair2r = hn::BitCast(
      d16, hn::Set(d32, static_cast<std::int32_t>(kWeight2 | (std::int32_t{kRound} << 16))));
  const auto one = hn::Set(d16, std::int16_t{1});
  auto rest = hn::Zero(d32);
  const auto sum = [&](V a, V b) HWY_ATTR {
    const auto first = hn::ReorderWidenMulAccumulate(d32, a, pair01, hn::Zero(d32), rest);
    const auto both = hn::ReorderWidenMulAccumulate(d32, b, pair2r, first, rest);
    return hn::ShiftRight<kShift>(hn::RearrangeToOddPlusEven(both, rest));
  };
  const auto low = sum(hn::InterleaveLower(d16, p0, p1), hn::InterleaveLower(d16, p2, one));
  const auto high = sum(hn::InterleaveUpper(d16, p0, p1), hn::InterleaveUpper(d16, p2, one));
  return hn::ReorderDemote2To(d16, low, high);
}
#endif

void GreyRowKernel(const std::uint8_t* colour, size_t cols, std::uint8_t* grey) {
  size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
  const U8 d8;
  const HalfU8 h8;
  const I16 d16;
  const size_t lanes = hn::Lanes(d8);
  for (; i + lanes <= cols; i += lanes) {
    hn::Vec<U8> p0, p1, p2;
    hn::LoadInterleaved3(d8, colour + 3 * i, p0, p1, p2);
    const auto low = WeightedSum(hn::PromoteTo(d16, hn::LowerHalf(h8, p0)),
                                 hn::PromoteTo(d16, hn::LowerHalf(h8, p1)),
                                 hn::PromoteTo(d16, hn::LowerHalf(h8, p2)));
    const auto high = WeightedSum(hn::PromoteTo(d16, hn::UpperHalf(h8, p0)),
                                  hn::PromoteTo(d16, hn::UpperHalf(h8, p1)),
                                  hn::PromoteTo(d16, hn::UpperHalf(h8, p2)));
    hn::StoreU(hn::Combine(d8, hn::DemoteTo(h8, high), hn::DemoteTo(h8, low)), d8, grey + i);
  }
#endif
  for (; i < cols; ++i) {
    const std::uint8_t* p = colour + 3 * i;
    const int sum = kWeight0 * p[0] + kWeight1 * p[1] + kWeight2 * p[2] + kRound;
    grey[i] = static_cast<std::uint8_t>(sum >> kShift);
  }
}

void HalveRowsKernel(const std::uint8_t* upper, const std::uint8_t* lower, size_t cols,
                     std::uint8_t* half) {
  size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
  const U8 d8;
  const HalfU8 h8;
  const hn::RepartitionToWide<U8> d16;
  const size_t lanes = hn::Lanes(d16);  // means per step
  const auto low = hn::Set(d16, std::uint16_t{0xFF});
  const auto two = hn::Set(d16, std::uint16_t{2});
  for (; i + lanes <= cols; i += lanes) {
    const auto a = hn::BitCast(d16, hn::LoadU(d8, upper + 2 * i));
    const auto b = hn::BitCast(d16, hn::LoadU(d8, lower + 2 * i));
    const auto pairs = hn::Add(hn::Add(hn::And(a, low), hn::ShiftRight<8>(a)),
                               hn::Add(hn::And(b, low), hn::ShiftRight<8>(b)));
    const auto mean = hn::ShiftRight<2>(hn::Add(pairs, two));
    hn::StoreU(hn::DemoteTo(h8, hn::BitCast(hn::RebindToSigned<decltype(d16)>(), mean)), h8,
               half + i);
  }
#endif
  for (; i < cols; ++i) {
    const int sum = upper[2 * i] + upper[2 * i + 1] + lower[2 * i] + lower[2 * i + 1];
    half[i] = static_cast<std::uint8_t>((sum + 2) >> 2);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(GreyRowKernel);
HWY_EXPORT(HalveRowsKernel);

void GreyRow(const unsigned char* colour, int cols, unsigned char* grey) {
  JQ_DISPATCH(GreyRowKernel)(colour, static_cast<size_t>(cols), grey);
}

void HalveRows(const unsigned char* upper, const unsigned char* lower, int cols,
               unsigned char* half) {
  JQ_DISPATCH(HalveRowsKernel)(upper, lower, static_cast<size_t>(cols), half);
}

}  // namespace jqstitching
#endif  // HWY_ONCE

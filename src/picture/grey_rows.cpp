#include <cstdint>

#include "picture/grey.h"

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "picture/grey_rows.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>

#include "cpu/dispatch.h"
#include "cpu/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

constexpr int kShift = 15;
constexpr std::int16_t kWeight0 = 9798, kWeight1 = 19235, kWeight2 = 3735;
constexpr std::int16_t kRound = 1 << (kShift - 1);

#if HWY_TARGET != HWY_SCALAR
using U8 = Vectors<std::uint8_t>;
using HalfU8 = hn::Half<U8>;
using I16 = Vectors<std::int16_t>;
using I32 = Vectors<std::int32_t>;
using U32 = Vectors<std::uint32_t>;

// Bytes of a block of four pixels (12 bytes) as 16-bit pairs: the first two
// samples of each pixel, and the third one beside a zero. 0x80 makes a zero.
alignas(16) constexpr std::uint8_t kFirstTwo[16] = {0, 0x80, 1, 0x80, 3, 0x80, 4,  0x80,
                                                    6, 0x80, 7, 0x80, 9, 0x80, 10, 0x80};
alignas(16) constexpr std::uint8_t kThird[16] = {2, 0x80, 0x80, 0x80, 5,  0x80, 0x80, 0x80,
                                                 8, 0x80, 0x80, 0x80, 11, 0x80, 0x80, 0x80};

// Returns the pixels done.
size_t GreyVectors(const std::uint8_t* colour, size_t cols, std::uint8_t* grey) {
  const U8 d8;
  const I16 d16;
  const I32 d32;
  const U32 du32;
  const hn::Rebind<std::uint8_t, I32> bytes;
  const size_t lanes = hn::Lanes(d32);
  // Block b of 128 bits takes its 12 bytes from 32-bit lane 3 b on.
  alignas(cpu::kVectorBytes) std::uint32_t firstLanes[cpu::kVectorBytes / 4];
  for (size_t i = 0; i < lanes; ++i) {
    firstLanes[i] = static_cast<std::uint32_t>(i / 4 * 3 + i % 4);
  }
  const auto blocks = hn::IndicesFromVec(du32, hn::Load(du32, firstLanes));
  const auto firstTwo = hn::LoadDup128(d8, kFirstTwo);
  const auto third = hn::LoadDup128(d8, kThird);
  const auto weights01 = hn::BitCast(d16, hn::Set(d32, kWeight0 | (std::int32_t{kWeight1} << 16)));
  const auto weight2 = hn::BitCast(d16, hn::Set(d32, std::int32_t{kWeight2}));
  const auto round = hn::Set(d32, std::int32_t{kRound});
  size_t i = 0;
  // A whole vector is read, a third more than its pixels; the surplus of the last one
  // must still lie in the row.
  for (; i + 2 * lanes <= cols; i += lanes) {
    const auto samples = hn::BitCast(
        d8, hn::TableLookupLanes(hn::BitCast(du32, hn::LoadU(d8, colour + 3 * i)), blocks));
    const auto pairs = hn::BitCast(d16, hn::TableLookupBytesOr0(samples, firstTwo));
    const auto singles = hn::BitCast(d16, hn::TableLookupBytesOr0(samples, third));
    // Which products are in which of the two sums differs from level to level;
    // joined, 32-bit lane k holds those of 16-bit lanes 2 k and 2 k + 1: one pixel.
    auto others = hn::Zero(d32);
    auto sums = hn::ReorderWidenMulAccumulate(d32, pairs, weights01, hn::Zero(d32), others);
    sums = hn::ReorderWidenMulAccumulate(d32, singles, weight2, sums, others);
    const auto pixels = hn::Add(hn::RearrangeToOddPlusEven(sums, others), round);
    hn::StoreU(hn::DemoteTo(bytes, hn::ShiftRight<kShift>(pixels)), bytes, grey + i);
  }
  return i;
}
#else
size_t GreyVectors(const std::uint8_t*, size_t, std::uint8_t*) {
  return 0;
}
#endif

void GreyRowKernel(const std::uint8_t* colour, size_t cols, std::uint8_t* grey) {
  for (size_t i = GreyVectors(colour, cols, grey); i < cols; ++i) {
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

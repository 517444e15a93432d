#include "blend/kernels/fuse_row.h"

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "blend/kernels/fuse_row.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>
// Above: once per level. Below: once.
#include "cpu/dispatch.h"
#include "cpu/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET != HWY_SCALAR

using D = Vectors<std::uint8_t>;
using D16 = hn::Repartition<std::uint16_t, D>;
using V16 = hn::Vec<D16>;

// 255 * n + w * (o - n) modulo 2^16; the true value lies in 0..65025.
V16 WeightedSum(V16 n, V16 o, V16 w) {
  return hn::Add(hn::Sub(hn::ShiftLeft<8>(n), n), hn::Mul(w, hn::Sub(o, n)));
}

// The quotient in the low byte; for the sums above the shifts equal x / 255.
template <bool kColour>
V16 Divide(V16 x) {
  if (kColour) x = hn::Add(hn::Add(x, hn::Set(D16(), 1)), hn::ShiftRight<8>(x));
  return hn::ShiftRight<8>(x);
}

// Returns the samples done.
template <bool kColour>
size_t FuseVectors(const std::uint8_t* old, const std::uint8_t* weight, std::uint8_t* frame,
                   std::uint8_t* block, size_t count) {
  const D d;
  const D16 d16;
  const size_t lanes = hn::Lanes(d);
  const auto low = hn::Set(d16, 255);
  size_t i = 0;
  for (; i + lanes <= count; i += lanes) {
    const auto w8 = hn::LoadU(d, weight + i);
    const auto n8 = hn::LoadU(d, frame + i);
    if (kColour && hn::AllTrue(d, hn::Eq(w8, hn::Zero(d)))) {
      // 255 * n / 255: the frame stays.
      if (block != nullptr) hn::StoreU(n8, d, block + i);
      continue;
    }
    const auto n = hn::BitCast(d16, n8);
    const auto o = hn::BitCast(d16, hn::LoadU(d, old + i));
    const auto w = hn::BitCast(d16, w8);
    // Even and odd samples apart, so that nothing changes lanes.
    const V16 even =
        Divide<kColour>(WeightedSum(hn::And(n, low), hn::And(o, low), hn::And(w, low)));
    const V16 odd = Divide<kColour>(
        WeightedSum(hn::ShiftRight<8>(n), hn::ShiftRight<8>(o), hn::ShiftRight<8>(w)));
    const auto fused = hn::BitCast(d, hn::Or(even, hn::ShiftLeft<8>(odd)));
    hn::StoreU(fused, d, frame + i);
    if (block != nullptr) hn::StoreU(fused, d, block + i);
  }
  return i;
}

#else

template <bool kColour>
size_t FuseVectors(const std::uint8_t*, const std::uint8_t*, std::uint8_t*, std::uint8_t*, size_t) {
  return 0;
}

#endif  // HWY_TARGET != HWY_SCALAR

template <bool kColour>
void FuseSamples(const std::uint8_t* old, const std::uint8_t* weight, std::uint8_t* frame,
                 std::uint8_t* block, size_t count) {
  size_t i = FuseVectors<kColour>(old, weight, frame, block, count);
  for (; i < count; ++i) {
    const unsigned w = weight[i];
    const unsigned sum = (255 - w) * frame[i] + w * old[i];
    frame[i] = static_cast<std::uint8_t>(kColour ? sum / 255 : sum / 256);
    if (block != nullptr) block[i] = frame[i];
  }
}

void FuseColoursKernel(const std::uint8_t* old, const std::uint8_t* weight, std::uint8_t* frame,
                       std::uint8_t* block, size_t count) {
  FuseSamples<true>(old, weight, frame, block, count);
}

void FuseGreysKernel(const std::uint8_t* old, const std::uint8_t* weight, std::uint8_t* frame,
                     std::uint8_t* block, size_t count) {
  FuseSamples<false>(old, weight, frame, block, count);
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(FuseColoursKernel);
HWY_EXPORT(FuseGreysKernel);

void FuseColourRow(const std::uint8_t* old, const std::uint8_t* weight, std::uint8_t* frame,
                   std::uint8_t* block, std::size_t count) {
  JQ_DISPATCH(FuseColoursKernel)(old, weight, frame, block, count);
}

void FuseGreyRow(const std::uint8_t* old, const std::uint8_t* weight, std::uint8_t* frame,
                 std::uint8_t* block, std::size_t count) {
  JQ_DISPATCH(FuseGreysKernel)(old, weight, frame, block, count);
}

}  // namespace jqstitching
#endif  // HWY_ONCE

#include "blend/kernels/weight_row.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "blend/kernels/row_layout.h"

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "blend/kernels/weight_row.cpp"
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

// Whole vectors only: the rows are padded.
void WeightsKernel(const float* oldDistance, const float* newDistance, float newCap,
                   std::uint8_t* weight, int cols) {
  const Vectors<float> d;
  const hn::Rebind<std::uint8_t, decltype(d)> db;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto zero = hn::Zero(d);
  const auto full = hn::Set(d, 255.0f);
  const auto cap = hn::Set(d, newCap);
  for (int c = 0; c < cols; c += lanes) {
    const auto a = hn::LoadU(d, oldDistance + c);
    const auto counts = hn::Gt(a, zero);
    if (hn::AllFalse(d, counts)) {
      hn::StoreU(hn::Zero(db), db, weight + c);
      continue;
    }
    const auto b = hn::Min(hn::LoadU(d, newDistance + c), cap);
    const auto share = hn::Div(hn::Mul(full, a), hn::Add(a, b));
    const auto rounded = hn::NearestInt(hn::IfThenElseZero(counts, share));
    hn::StoreU(hn::DemoteTo(db, rounded), db, weight + c);
  }
}

void TripleKernel(const std::uint8_t* weight, std::uint8_t* tripled, int cols) {
  const hn::Full128<std::uint8_t> d;
  HWY_ALIGN static constexpr std::uint8_t kThird[3][16] = {
      {0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5},
      {5, 5, 6, 6, 6, 7, 7, 7, 8, 8, 8, 9, 9, 9, 10, 10},
      {10, 11, 11, 11, 12, 12, 12, 13, 13, 13, 14, 14, 14, 15, 15, 15}};
  const auto first = hn::Load(d, kThird[0]);
  const auto second = hn::Load(d, kThird[1]);
  const auto third = hn::Load(d, kThird[2]);
  for (int c = 0; c < cols; c += 16, tripled += 48) {
    const auto w = hn::LoadU(d, weight + c);
    hn::StoreU(hn::TableLookupBytes(w, first), d, tripled);
    hn::StoreU(hn::TableLookupBytes(w, second), d, tripled + 16);
    hn::StoreU(hn::TableLookupBytes(w, third), d, tripled + 32);
  }
}

#else

void WeightsKernel(const float* oldDistance, const float* newDistance, float newCap,
                   std::uint8_t* weight, int cols) {
  for (int c = 0; c < cols; ++c) {
    const float a = oldDistance[c];
    const float b = std::min(newDistance[c], newCap);
    weight[c] = 0;
    if (a > 0.0f) weight[c] = static_cast<std::uint8_t>(std::lrint((255.0f * a) / (a + b)));
  }
}

void TripleKernel(const std::uint8_t* weight, std::uint8_t* tripled, int cols) {
  for (int c = 0; c < cols; ++c, tripled += 3) {
    tripled[0] = tripled[1] = tripled[2] = weight[c];
  }
}

#endif  // HWY_TARGET != HWY_SCALAR

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(WeightsKernel);
HWY_EXPORT(TripleKernel);

void WeightRow(const float* oldDistance, const float* newDistance, float newCap,
               std::uint8_t* weight, int cols) {
  JQ_DISPATCH(WeightsKernel)(oldDistance, newDistance, newCap, weight, cols);
}

void TripleWeights(const std::uint8_t* weight, std::uint8_t* tripled, int cols) {
  JQ_DISPATCH(TripleKernel)(weight, tripled, cols);
}

}  // namespace jqstitching
#endif  // HWY_ONCE

#include "blend/chamfer_row.h"

#include <algorithm>
#include <cstddef>

#include "blend/chamfer_steps.h"
#include "blend/row_layout.h"

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "blend/chamfer_row.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>
// Above: once per level. Below: once.
#include "cpu/dispatch.h"

// Along a row each distance waits for its neighbour. Rounded addition of a constant
// is monotone, so it may be exchanged with the minimum, and the chain
//     d[c] = min(a[c], d[c-1] + s)
// has one solution, which a guess equals exactly when it satisfies every link. The
// guess replaces d[c-1] by the row above at the same column: right wherever the
// distance is measured from above, or from a vertical edge, or has met its cap,
// which is nearly everywhere. A guess that fails is put through the links until it
// stays: each round settles at least one more lane.

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

void FillPads(float* d, int cols) {
  d[-1] = kDistanceCap;
  const size_t end = PaddedCols(cols) + 1;
  for (size_t c = cols; c < end; ++c) d[c] = kDistanceCap;
}

// The terms of column c that come from a finished row, and the value so far.
float FromNeighbourRow(float value, const float* row, int c) {
  value = std::min(value, row[c] + kStraightStep);
  value = std::min(value, row[c - 1] + kDiagonalStep);
  return std::min(value, row[c + 1] + kDiagonalStep);
}

void InitialRow(const std::uint8_t* content, float* d, int cols) {
  for (int c = 0; c < cols; ++c) d[c] = content[c] != 0 ? kDistanceCap : 0.0f;
  FillPads(d, cols);
}

#if HWY_TARGET != HWY_SCALAR

using D = hn::ScalableTag<float>;
using V = hn::Vec<D>;
using Indices = decltype(hn::SetTableIndices(D(), static_cast<const int32_t*>(nullptr)));

// Moves lanes one column right (forward) or left (backward) across the whole
// vector; the lane that becomes free takes the nearest lane of the vector before.
template <bool kForward>
struct Shifter {
  Shifter() : move(Make(true)), edge(Make(false)), isFree(Free()) {}

  static Indices Make(bool isMove) {
    const D d;
    const int32_t lanes = static_cast<int32_t>(hn::Lanes(d));
    HWY_ALIGN int32_t index[hn::MaxLanes(D())];
    for (int32_t i = 0; i < lanes; ++i) {
      const int32_t moved = kForward ? std::max(i - 1, 0) : std::min(i + 1, lanes - 1);
      index[i] = isMove ? moved : (kForward ? lanes - 1 : 0);
    }
    return hn::SetTableIndices(d, index);
  }
  static hn::Mask<D> Free() {
    const D d;
    return kForward ? hn::FirstN(d, 1) : hn::Not(hn::FirstN(d, hn::Lanes(d) - 1));
  }
  V operator()(V v, V nearest) const {
    return hn::IfThenElse(isFree, nearest, hn::TableLookupLanes(v, move));
  }

  Indices move, edge;
  hn::Mask<D> isFree;
};

// The chain of one vector: `a` the terms that do not wait, `guess` the first
// trial, `before` the finished vector that the chain comes from.
template <bool kForward>
V SolveChain(const Shifter<kForward>& shift, V a, V guess, V before) {
  const D d;
  const V step = hn::Set(d, kStraightStep);
  const V nearest = hn::TableLookupLanes(before, shift.edge);
  for (;;) {
    const V next = hn::Min(a, hn::Add(shift(guess, nearest), step));
    if (HWY_LIKELY(hn::AllTrue(d, hn::Eq(next, guess)))) return guess;
    guess = next;
  }
}

// min(value, row[c-1] + g, row[c] + s, row[c+1] + g) for the columns from c on.
V FromNeighbourRow(V value, V left, V middle, V right) {
  const D d;
  const V step = hn::Set(d, kStraightStep);
  const V diagonal = hn::Set(d, kDiagonalStep);
  value = hn::Min(value, hn::Add(middle, step));
  // The smaller of two sums with one constant is the sum with the smaller.
  return hn::Min(value, hn::Add(hn::Min(left, right), diagonal));
}

void ForwardChains(const float* up, const std::uint8_t* content, float* out, int cols) {
  const D d;
  const hn::RebindToSigned<D> di;
  const hn::Rebind<std::uint8_t, D> db;
  static_assert(hn::MaxLanes(D()) <= kRowPad, "pads are too narrow");
  const int lanes = static_cast<int>(hn::Lanes(d));
  const V cap = hn::Set(d, kDistanceCap);
  const V step = hn::Set(d, kStraightStep);
  const Shifter<true> shift;
  V before = cap;
  for (int c = 0; c < cols; c += lanes) {
    const auto samples = hn::PromoteTo(di, hn::LoadU(db, content + c));
    const V init = hn::IfThenElseZero(hn::RebindMask(d, hn::Ne(samples, hn::Zero(di))), cap);
    const V left = hn::LoadU(d, up + c - 1);
    const V a = FromNeighbourRow(init, left, hn::LoadU(d, up + c), hn::LoadU(d, up + c + 1));
    before = SolveChain(shift, a, hn::Min(a, hn::Add(left, step)), before);
    hn::StoreU(before, d, out + c);
  }
}

void BackwardChains(const float* fore, const float* down, float* out, int cols) {
  const D d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const V step = hn::Set(d, kStraightStep);
  const Shifter<false> shift;
  V before = hn::Set(d, kDistanceCap);
  // The pads take part: they hold the cap on entry, and what they get here is a
  // longer way than the one that the last column already has.
  for (int c = (cols - 1) / lanes * lanes; c >= 0; c -= lanes) {
    const V right = hn::LoadU(d, down + c + 1);
    const V a = FromNeighbourRow(hn::LoadU(d, fore + c), hn::LoadU(d, down + c - 1),
                                 hn::LoadU(d, down + c), right);
    before = SolveChain(shift, a, hn::Min(a, hn::Add(right, step)), before);
    hn::StoreU(before, d, out + c);
  }
}

#else

void ForwardChains(const float* up, const std::uint8_t* content, float* out, int cols) {
  float before = kDistanceCap;
  for (int c = 0; c < cols; ++c) {
    const float a = FromNeighbourRow(content[c] != 0 ? kDistanceCap : 0.0f, up, c);
    before = std::min(a, before + kStraightStep);
    out[c] = before;
  }
}

void BackwardChains(const float* fore, const float* down, float* out, int cols) {
  float before = kDistanceCap;
  for (int c = cols - 1; c >= 0; --c) {
    before = std::min(FromNeighbourRow(fore[c], down, c), before + kStraightStep);
    out[c] = before;
  }
}

#endif  // HWY_TARGET != HWY_SCALAR

void ForwardRow(const float* up, const std::uint8_t* content, float* d, int cols) {
  ForwardChains(up, content, d, cols);
  // The last column stands outside the chain.
  const int last = cols - 1;
  float value = FromNeighbourRow(content[last] != 0 ? kDistanceCap : 0.0f, up, last);
  if (cols == 2) {
    value = std::min(value, d[0] + kDiagonalStep);
  } else if (cols > 2 && content[last - 1] == 0) {
    value = std::min(value, 0.0f + kDiagonalStep);
  }
  d[last] = value;
  FillPads(d, cols);
}

void BackwardRow(const float* before, const float* down, float* d, int cols) {
  BackwardChains(before, down, d, cols);
  d[0] = FromNeighbourRow(before[0], down, 0);
  FillPads(d, cols);
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(InitialRow);
HWY_EXPORT(ForwardRow);
HWY_EXPORT(BackwardRow);

void InitialDistanceRow(const std::uint8_t* content, float* d, int cols) {
  JQ_DISPATCH(InitialRow)(content, d, cols);
}

void ForwardDistanceRow(const float* up, const std::uint8_t* content, float* d, int cols) {
  JQ_DISPATCH(ForwardRow)(up, content, d, cols);
}

void BackwardDistanceRow(const float* before, const float* down, float* d, int cols) {
  JQ_DISPATCH(BackwardRow)(before, down, d, cols);
}

}  // namespace jqstitching
#endif  // HWY_ONCE

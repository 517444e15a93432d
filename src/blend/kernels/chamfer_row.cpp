#include "blend/kernels/chamfer_row.h"

#include <algorithm>
#include <cstddef>

#include "blend/kernels/chamfer_steps.h"
#include "blend/kernels/row_layout.h"

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "blend/kernels/chamfer_row.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>
// Above: once per level. Below: once.
#include "cpu/dispatch.h"
#include "cpu/vectors-inl.h"

// Along a row, each distance depends on the one just before it:
//     d[c] = min(a[c], d[c-1] + s)
// where a[c] is known for the whole vector at once. Only one sequence d satisfies this
// equation in every column. A vector of distances can therefore be guessed and then
// checked in one step: if it satisfies the equation in every lane, it is the exact result,
// rounding included.
//
// The first guess takes the row above at the column before in place of d[c-1]. That is
// right wherever the nearest empty pixel lies above or beyond a vertical edge, and wherever
// the distance has reached its cap, which is nearly everywhere. Where it is wrong, a more
// expensive guess is taken that suits any content. That one is put through the equation
// until it no longer changes; each round settles at least one more lane.

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

void InitialKernel(const std::uint8_t* content, float* d, int cols) {
  for (int c = 0; c < cols; ++c) d[c] = content[c] != 0 ? kDistanceCap : 0.0f;
  FillPads(d, cols);
}

#if HWY_TARGET != HWY_SCALAR

using D = Vectors<float>;
using V = hn::Vec<D>;
using Indices = decltype(hn::SetTableIndices(D(), static_cast<const int32_t*>(nullptr)));

constexpr int32_t kMaxLanes = static_cast<int32_t>(cpu::kVectorBytes / sizeof(float));
static_assert(kMaxLanes <= static_cast<int32_t>(kRowPad), "pads are too narrow");

int32_t LaneCount() {
  return static_cast<int32_t>(hn::Lanes(D()));
}

// Lanes move along the way of the chain: to the right (forward) or to the left. What
// one row needs for that, in memory; a kernel loads it where it is used.
template <bool kForward>
struct ChainTables {
  ChainTables() {
    const int32_t lanes = LaneCount();
    for (int k = 0; k < kMoves; ++k) {
      for (int32_t i = 0; i < lanes; ++i) {
        const int32_t step = 1 << k;
        moves[k][i] = kForward ? std::max(i - step, 0) : std::min(i + step, lanes - 1);
      }
    }
    for (int32_t i = 0; i < lanes; ++i) {
      edge[i] = kForward ? lanes - 1 : 0;
      stepsFromEdge[i] = static_cast<float>(kForward ? i + 1 : lanes - i);
    }
  }
  // For a move by 2^k lanes; lanes without a source take the last one's.
  Indices move(int k) const { return hn::SetTableIndices(D(), moves[k]); }

  static constexpr int kMoves = 4;
  static_assert(kMaxLanes <= 1 << kMoves, "a chain needs more moves than there are");
  HWY_ALIGN int32_t moves[kMoves][kMaxLanes];
  HWY_ALIGN int32_t edge[kMaxLanes];
  HWY_ALIGN float stepsFromEdge[kMaxLanes];
};

// The lanes without a source.
template <bool kForward>
hn::Mask<D> FreeLanes(int32_t step) {
  if (kForward) return hn::FirstN(D(), static_cast<size_t>(step));
  return hn::Not(hn::FirstN(D(), static_cast<size_t>(LaneCount() - step)));
}

// A guess for any content. Within the vector it takes the minimum over the lanes before
// by doubling the reach, adding the steps one by one as the equation does. From `nearest`,
// the last distance of the vector before, it adds all steps at once as one product, which
// equals the sums one by one unless the spacing of floats changes on the way.
template <bool kForward>
V CarefulGuess(const ChainTables<kForward>& tables, V a, V nearest) {
  const D d;
  const int32_t lanes = LaneCount();
  const V step = hn::Set(d, kStraightStep);
  const V cap = hn::Set(d, kDistanceCap);
  V within = a;
  for (int32_t k = 0, steps = 1; steps < lanes; ++k, steps *= 2) {
    V moved = hn::IfThenElse(FreeLanes<kForward>(steps), cap,
                             hn::TableLookupLanes(within, tables.move(k)));
    for (int32_t n = 0; n < steps; ++n) moved = hn::Add(moved, step);
    within = hn::Min(within, moved);
  }
  const V roundedStep = hn::Sub(hn::Add(nearest, step), nearest);
  const V stepsFromEdge = hn::Load(d, tables.stepsFromEdge);
  return hn::Min(within, hn::Add(nearest, hn::Mul(roundedStep, stepsFromEdge)));
}

// The chain of one vector: `a` the terms that do not wait, `guess` the first
// trial, `nearest` the distance at the edge; `moveOne` and `freeOne` belong to a move
// by one lane.
template <bool kForward>
HWY_INLINE V SolveChain(const ChainTables<kForward>& tables, V a, V guess, V nearest,
                        Indices moveOne, hn::Mask<D> freeOne) {
  const D d;
  const V step = hn::Set(d, kStraightStep);
  V before = hn::IfThenElse(freeOne, nearest, hn::TableLookupLanes(guess, moveOne));
  V next = hn::Min(a, hn::Add(before, step));
  if (HWY_LIKELY(hn::AllTrue(d, hn::Eq(next, guess)))) return guess;
  next = CarefulGuess(tables, a, nearest);
  do {
    guess = next;
    before = hn::IfThenElse(freeOne, nearest, hn::TableLookupLanes(guess, moveOne));
    next = hn::Min(a, hn::Add(before, step));
  } while (!hn::AllTrue(d, hn::Eq(next, guess)));
  return guess;
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
  const int lanes = LaneCount();
  const V cap = hn::Set(d, kDistanceCap);
  const V step = hn::Set(d, kStraightStep);
  const ChainTables<true> tables;
  const Indices moveOne = tables.move(0), edge = hn::SetTableIndices(d, tables.edge);
  const hn::Mask<D> freeOne = FreeLanes<true>(1);
  V before = cap;
  for (int c = 0; c < cols; c += lanes) {
    const auto samples = hn::PromoteTo(di, hn::LoadU(db, content + c));
    const V init = hn::IfThenElseZero(hn::RebindMask(d, hn::Ne(samples, hn::Zero(di))), cap);
    const V left = hn::LoadU(d, up + c - 1);
    const V a = FromNeighbourRow(init, left, hn::LoadU(d, up + c), hn::LoadU(d, up + c + 1));
    before = SolveChain(tables, a, hn::Min(a, hn::Add(left, step)),
                        hn::TableLookupLanes(before, edge), moveOne, freeOne);
    hn::StoreU(before, d, out + c);
  }
}

void BackwardChains(const float* fore, const float* down, float* out, int cols) {
  const D d;
  const int lanes = LaneCount();
  const V step = hn::Set(d, kStraightStep);
  const ChainTables<false> tables;
  const Indices moveOne = tables.move(0), edge = hn::SetTableIndices(d, tables.edge);
  const hn::Mask<D> freeOne = FreeLanes<false>(1);
  V before = hn::Set(d, kDistanceCap);
  // The pads take part: they hold the cap on entry, and what they get here is a
  // longer way than the one that the last column already has.
  for (int c = (cols - 1) / lanes * lanes; c >= 0; c -= lanes) {
    const V right = hn::LoadU(d, down + c + 1);
    const V a = FromNeighbourRow(hn::LoadU(d, fore + c), hn::LoadU(d, down + c - 1),
                                 hn::LoadU(d, down + c), right);
    before = SolveChain(tables, a, hn::Min(a, hn::Add(right, step)),
                        hn::TableLookupLanes(before, edge), moveOne, freeOne);
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

void ForwardKernel(const float* up, const std::uint8_t* content, float* d, int cols) {
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

void BackwardKernel(const float* before, const float* down, float* d, int cols) {
  BackwardChains(before, down, d, cols);
  d[0] = FromNeighbourRow(before[0], down, 0);
  FillPads(d, cols);
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(InitialKernel);
HWY_EXPORT(ForwardKernel);
HWY_EXPORT(BackwardKernel);

void InitialDistanceRow(const std::uint8_t* content, float* d, int cols) {
  JQ_DISPATCH(InitialKernel)(content, d, cols);
}

void ForwardDistanceRow(const float* up, const std::uint8_t* content, float* d, int cols) {
  JQ_DISPATCH(ForwardKernel)(up, content, d, cols);
}

void BackwardDistanceRow(const float* before, const float* down, float* d, int cols) {
  JQ_DISPATCH(BackwardKernel)(before, down, d, cols);
}

}  // namespace jqstitching
#endif  // HWY_ONCE

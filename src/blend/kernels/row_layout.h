#ifndef JQ_BLEND_KERNELS_ROW_LAYOUT_H
#define JQ_BLEND_KERNELS_ROW_LAYOUT_H

#include <cstddef>

#include "cpu/vector_bytes.h"

namespace jqstitching {

/// Scratch rows stand between pads, so that vector code can read past both ends:
///
///     | kRowPad | cols samples | up to a multiple of kRowPad | kRowPad |
///
/// kRowPad is at least the lanes of the longest vector of 32-bit samples.
constexpr std::size_t kRowPad = 16;
static_assert(kRowPad * 4 >= cpu::kVectorBytes, "a vector of 32-bit samples does not fit");

constexpr std::size_t PaddedCols(std::size_t cols) {
  return (cols + kRowPad - 1) / kRowPad * kRowPad;
}
constexpr std::size_t RowStride(std::size_t cols) {
  return PaddedCols(cols) + 2 * kRowPad;
}

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_ROW_LAYOUT_H

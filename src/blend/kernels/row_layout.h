#ifndef JQ_BLEND_KERNELS_ROW_LAYOUT_H
#define JQ_BLEND_KERNELS_ROW_LAYOUT_H

#include <cstddef>

namespace jqstitching {

/// Scratch rows stand between pads, so that vector code can read past both ends:
///
///     | kRowPad | cols samples | up to a multiple of kRowPad | kRowPad |
///
/// kRowPad is at least the lanes of the widest level's 32-bit vectors.
constexpr std::size_t kRowPad = 16;

constexpr std::size_t PaddedCols(std::size_t cols) {
  return (cols + kRowPad - 1) / kRowPad * kRowPad;
}
constexpr std::size_t RowStride(std::size_t cols) {
  return PaddedCols(cols) + 2 * kRowPad;
}

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_ROW_LAYOUT_H

#ifndef JQ_BLEND_KERNELS_DISTANCE_MAP_H
#define JQ_BLEND_KERNELS_DISTANCE_MAP_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "blend/kernels/content_row.h"
#include "blend/kernels/scratch_buffer.h"

namespace jqstitching {

/// The chamfer distances of an image to its empty pixels, from two raster passes
/// (chamfer_row.h). The forward pass is kept whole; of the backward pass only the
/// last two rows, so that its user works on a row while it is at hand.
///
/// Rows without content, and rows that no distance has reached yet, stand for
/// constants and are neither written nor read: a block that the mosaic covers
/// wholly, or not at all, costs next to nothing.
class DistanceMap {
 public:
  /// All memory is taken here; nothing else throws.
  void prepare(int rows, int cols);

  /// Rows 0, 1, 2 ... in turn, with their content as MarkContent writes it.
  void forwardRow(int r, RowContent summary, const std::uint8_t* content);

  /// Rows rows-1, rows-2 ... in turn. The row is valid until the next but one.
  const float* backwardRow(int r);

  /// True when the row is empty from end to end.
  bool isEmptyRow(int r) const { return m_kinds[r] == RowContent::kEmpty; }

 private:
  float* stored(int r) const;
  const float* forwardResult(int r) const;

  int m_rows = 0, m_cols = 0;
  std::size_t m_stride = 0;
  // kEmpty: all 0. kFull: all at the cap. kMixed: stored.
  std::vector<RowContent> m_kinds;
  ScratchBuffer<float> m_map, m_rowsAtHand;
  const float* m_empty = nullptr;
  const float* m_full = nullptr;
  float* m_turns[2] = {nullptr, nullptr};
  const float* m_down = nullptr;
};

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_DISTANCE_MAP_H

#include "blend/kernels/distance_map.h"

#include <algorithm>

#include "blend/kernels/chamfer_row.h"
#include "blend/kernels/chamfer_steps.h"
#include "blend/kernels/row_layout.h"

namespace jqstitching {

void DistanceMap::prepare(int rows, int cols) {
  m_rows = rows;
  m_cols = cols;
  m_stride = RowStride(cols);
  m_kinds.resize(rows);
  m_map.reserve(m_stride * rows);
  float* atHand = m_rowsAtHand.reserve(4 * m_stride);
  std::fill_n(atHand, 4 * m_stride, kDistanceCap);
  std::fill_n(atHand + kRowPad, cols, 0.0f);
  m_empty = atHand + kRowPad;
  m_full = m_empty + m_stride;
  m_turns[0] = atHand + 2 * m_stride + kRowPad;
  m_turns[1] = m_turns[0] + m_stride;
}

float* DistanceMap::stored(int r) const {
  return m_map.data() + m_stride * r + kRowPad;
}

const float* DistanceMap::forwardResult(int r) const {
  if (m_kinds[r] == RowContent::kEmpty) return m_empty;
  return m_kinds[r] == RowContent::kFull ? m_full : stored(r);
}

void DistanceMap::forwardRow(int r, RowContent summary, const std::uint8_t* content) {
  m_kinds[r] = RowContent::kMixed;
  if (summary == RowContent::kEmpty) {
    m_kinds[r] = RowContent::kEmpty;
  } else if (r == 0) {
    if (summary == RowContent::kFull) {
      m_kinds[r] = RowContent::kFull;
    } else {
      InitialDistanceRow(content, stored(r), m_cols);
    }
  } else if (summary == RowContent::kFull && m_kinds[r - 1] == RowContent::kFull) {
    m_kinds[r] = RowContent::kFull;
  } else {
    ForwardDistanceRow(forwardResult(r - 1), content, stored(r), m_cols);
  }
}

const float* DistanceMap::backwardRow(int r) {
  const float* row = forwardResult(r);
  const bool settled = r == m_rows - 1 || row == m_empty || (row == m_full && m_down == m_full);
  if (!settled) {
    float* turn = m_down == m_turns[0] ? m_turns[1] : m_turns[0];
    BackwardDistanceRow(row, m_down, turn, m_cols);
    row = turn;
  }
  m_down = row;
  return row;
}

}  // namespace jqstitching

#include "blend/kernels/edge_distance.h"

#include <algorithm>
#include <cstddef>

#include "blend/kernels/chamfer_steps.h"
#include "blend/kernels/row_layout.h"

namespace jqstitching {

void EdgeDistance::prepare(int rows, int cols) {
  if (rows == m_rows && cols == m_cols) return;
  m_rows = m_cols = 0;
  const std::size_t count = static_cast<std::size_t>(std::max(rows, cols)) / 2 + 1;
  float* steps = m_steps.reserve(count);
  float* columns = m_columns.reserve(RowStride(cols));
  steps[0] = 0.0f;
  for (std::size_t k = 1; k < count; ++k) {
    steps[k] = std::min(kDistanceCap, steps[k - 1] + kStraightStep);
  }
  std::fill_n(columns, RowStride(cols), 0.0f);
  for (int c = 0; c < cols; ++c) columns[kRowPad + c] = steps[std::min(c, cols - 1 - c)];
  m_rows = rows;
  m_cols = cols;
}

float EdgeDistance::rowDistance(int r) const {
  return m_steps.data()[std::min(r, m_rows - 1 - r)];
}

const float* EdgeDistance::columnDistances() const {
  return m_columns.data() + kRowPad;
}

}  // namespace jqstitching

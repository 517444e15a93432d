#ifndef JQ_BLEND_KERNELS_EDGE_DISTANCE_H
#define JQ_BLEND_KERNELS_EDGE_DISTANCE_H

#include "blend/kernels/scratch_buffer.h"

namespace jqstitching {

/// The chamfer distance map of an image whose only empty pixels are its border. From
/// every pixel the cheapest way to an empty one then runs straight up, down, left or
/// right, since a diagonal step costs more than a straight one and saves none here. So
/// the two raster passes of the distance transform come down to a table of sums:
///
///     d[r][c] = min(S[min(r, rows-1-r)], S[min(c, cols-1-c)]),
///     S[0] = 0,  S[k] = min(255, S[k-1] + 0.2f)
class EdgeDistance {
 public:
  /// Keeps its tables while the size stays.
  void prepare(int rows, int cols);

  /// S of the row.
  float rowDistance(int r) const;
  /// S of every column, laid out as in row_layout.h.
  const float* columnDistances() const;

 private:
  int m_rows = 0, m_cols = 0;
  ScratchBuffer<float> m_steps, m_columns;
};

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_EDGE_DISTANCE_H

#ifndef JQ_BLEND_KERNELS_CHAMFER_ROW_H
#define JQ_BLEND_KERNELS_CHAMFER_ROW_H

#include <cstdint>

namespace jqstitching {

// One row of the two raster passes over a distance map. Rows are laid out as in
// row_layout.h; the pads of every row hold kDistanceCap from column -1 to the left
// and from column `cols` to the right, and are written so again. `content` holds 0
// for an empty pixel and any other value else. s and g are the straight and the
// diagonal step, init is 0 for an empty pixel and kDistanceCap else; every minimum
// is taken over single-precision sums rounded one by one.

/// Row 0 before the backward pass: d[c] = init[c].
void InitialDistanceRow(const std::uint8_t* content, float* d, int cols);

/// Forward pass, `up` being the finished row above:
///   column 0:           d = min(init, up[0] + s, up[1] + g)
///   last column, L:     d = min(init, up[L] + s, up[L-1] + g, d[L-1] + g), with
///                       d[L-1] as it was before the interior was visited
///   interior, rightwards: d = min(init, d[c-1] + s, up[c-1] + g, up[c] + s, up[c+1] + g)
void ForwardDistanceRow(const float* up, const std::uint8_t* content, float* d, int cols);

/// Backward pass, `before` being the row that the forward pass left and `down` the
/// finished row below; `d` must be neither of them:
///   last column, L:     d = min(before, down[L] + s, down[L-1] + g)
///   interior, leftwards: d = min(before, d[c+1] + s, down[c-1] + g, down[c] + s, down[c+1] + g)
///   column 0:           d = min(before, down[0] + s, down[1] + g)
void BackwardDistanceRow(const float* before, const float* down, float* d, int cols);

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_CHAMFER_ROW_H

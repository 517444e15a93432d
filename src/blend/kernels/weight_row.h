#ifndef JQ_BLEND_KERNELS_WEIGHT_ROW_H
#define JQ_BLEND_KERNELS_WEIGHT_ROW_H

#include <cstdint>

namespace jqstitching {

/// Weights of the old content for one row: with a = oldDistance[c] and
/// b = min(newDistance[c], newCap), all in single precision,
///
///     weight[c] = nearest((255 * a) / (a + b)), halves to even,
///
/// and 0 where a is 0 (the quotient is undefined where b is 0 as well). Rows are
/// laid out as in row_layout.h; `weight` is written up to a multiple of kRowPad.
void WeightRow(const float* oldDistance, const float* newDistance, float newCap,
               std::uint8_t* weight, int cols);

/// Writes each weight three times, for the three samples of a pixel: 3 * cols
/// bytes, rounded up to a multiple of 3 * kRowPad.
void TripleWeights(const std::uint8_t* weight, std::uint8_t* tripled, int cols);

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_WEIGHT_ROW_H

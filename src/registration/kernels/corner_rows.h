#ifndef JQ_REGISTRATION_KERNELS_CORNER_ROWS_H
#define JQ_REGISTRATION_KERNELS_CORNER_ROWS_H

#include <cstddef>
#include <cstdint>

#include "cpu/vector_bytes.h"

namespace jqstitching {

/// Row kernels of the corner response. Rows are given by their first column, and
/// [begin, end) are the columns computed. Float rows have room for kRowPadding
/// floats behind `end`, which may be overwritten and whose contents do not count.
constexpr int kRowPadding = 32;
static_assert(kRowPadding * sizeof(float) >= cpu::kVectorBytes, "a vector of floats does not fit");

/// The three maps of gradient products: xx, yy, xy.
constexpr int kMaps = 3;
/// Taps of the smoothing kernel.
constexpr int kTaps = 9;

/// |Sobel| / 4 in x and y, and their products, never negative:
/// out[0] = gx * gx, out[1] = gy * gy, out[2] = gx * gy. Reads columns begin - 1
/// to end of the three image rows.
void ProductsRow(const std::uint8_t* above, const std::uint8_t* row, const std::uint8_t* below,
                 int begin, int end, float* const out[kMaps]);

/// upper[j] = sum of taps[k] * rows[k][j], k ascending, in single precision; one
/// rounding per tap when `fused` (the level must have it: cpu::HasFused). lower[j]
/// is the same one row further down: two rows at once read each row once.
void SmoothDown(const float* const rows[kTaps + 1], const float* taps, int begin, int end,
                bool fused, float* upper, float* lower);

/// out[j] = sum of taps[k] * row[j + k - 4], likewise.
void SmoothAcross(const float* row, const float* taps, int begin, int end, bool fused, float* out);

/// response[j] = max(0, float(det + (t * -0.007) * t)), with det = xx * yy - xy * xy
/// and t = xx + yy in single precision and the rest in double. Returns the sum
/// of the responses, in double, in an order of its own.
double ResponseRow(const float* xx, const float* yy, const float* xy, int begin, int end,
                   float* response);

/// Columns whose positive response equals the largest of its 3 x 3 neighbourhood,
/// ascending. `found` has room for end - begin columns; returns their number.
size_t MaximaRow(const float* above, const float* row, const float* below, int begin, int end,
                 int* found);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_KERNELS_CORNER_ROWS_H

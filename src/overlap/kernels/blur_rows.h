#ifndef JQ_OVERLAP_KERNELS_BLUR_ROWS_H
#define JQ_OVERLAP_KERNELS_BLUR_ROWS_H

#include <cstdint>

#include "cpu/vector_bytes.h"

namespace jqstitching {

constexpr int kBlurTaps = 5;
/// Values behind the end of every row given, which may be read and overwritten.
constexpr int kBlurPadding = static_cast<int>(cpu::kVectorBytes);

/// out[j] = samples[j] as floats.
void WidenRow(const std::uint8_t* samples, int cols, float* out);

/// out[j] = round(sum of taps[k] * rows[k][j]), taps in order, in single precision
/// with one rounding per tap when `fused`; halves round to even. The rounded
/// values are whole numbers from 0 to 255.
void BlurDown(const float* const rows[kBlurTaps], const float* taps, int cols, bool fused,
              float* out);

/// out[j] = round(sum of taps[k] * row[j + k - 2]), likewise.
void BlurAcross(const float* row, const float* taps, int cols, bool fused, std::uint8_t* out);

/// out[j] = |first[j] - second[j]|; returns their sum.
std::uint64_t DifferenceRow(const std::uint8_t* first, const std::uint8_t* second, int cols,
                            std::uint8_t* out);

/// The response of row `row` to the kernel (1 2 1) downwards times (-1 2 -1)
/// across, cut to 0..255, for columns [begin, end). Reads columns begin - 1 to end.
/// Responses of 10 or less are stored as 0. Returns the sum and the number of the
/// others.
struct StrongResponses {
  std::uint64_t sum = 0;
  int count = 0;
};
StrongResponses EdgeRow(const std::uint8_t* above, const std::uint8_t* row,
                        const std::uint8_t* below, int begin, int end, std::uint8_t* out);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_KERNELS_BLUR_ROWS_H

#ifndef JQ_BLEND_KERNELS_CONTENT_ROW_H
#define JQ_BLEND_KERNELS_CONTENT_ROW_H

#include <cstdint>

namespace jqstitching {

/// What the pixels of a row have in common.
enum class RowContent : std::uint8_t { kEmpty, kFull, kMixed };

/// Writes 0 for every empty pixel and 255 for every other one.
///
/// A one-channel pixel is empty when it is 0, a colour pixel when its grey value
/// (`cv::cvtColor` code 7, fixed point, rounded) is 0. These are seven colours:
/// (0, 0, 0..4) and (1, 0, 0..1), as the weights of the three samples are about
/// 0.299, 0.587 and 0.114 and the sum has to stay below one half.
///
/// `content` is written up to a multiple of kRowPad; what is past `cols` means
/// nothing. `pixels` is not read past its cols * channels bytes.
RowContent MarkContent(const std::uint8_t* pixels, int channels, std::uint8_t* content, int cols);

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_CONTENT_ROW_H

#ifndef JQ_IMAGE_HEADER_H
#define JQ_IMAGE_HEADER_H

#include <cstdint>
#include <cstdio>
#include <opencv2/core/types.hpp>

// Sizes read from file headers, for files that are plain enough to be sure what a
// full decode would give. Everything else is "not sure", never a wrong size: the
// caller then decodes the file.
namespace jqheader {

/// Size of a whole PNG file: every chunk up to the end mark is there and its
/// checksum holds. Not sure (0 x 0) for damage, an orientation tag, or sizes that
/// the image library refuses.
cv::Size pngSize(std::FILE* file);

/// Size of a whole baseline JPEG file: one scan with all that it uses defined
/// before, and compressed data without stray marks up to the end mark. Not sure
/// (0 x 0) for damage, a progressive file, an orientation tag that swaps width and
/// height, or anything unusual. Wrong values within the compressed data do not
/// count: a decoder makes a picture of the full size of them.
cv::Size jpegSize(std::FILE* file);

/// Sides and areas above these are refused by the image library's defaults.
inline bool isPlausible(std::int64_t width, std::int64_t height) {
  constexpr std::int64_t kMaxSide = std::int64_t{1} << 20;
  constexpr std::int64_t kMaxPixels = std::int64_t{1} << 30;
  return width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide &&
         width * height <= kMaxPixels;
}

}  // namespace jqheader

#endif  // JQ_IMAGE_HEADER_H

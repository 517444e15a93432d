#ifndef JQHOST_SOURCE_HEADER_SIZE_H
#define JQHOST_SOURCE_HEADER_SIZE_H

#include <cstdint>
#include <istream>
#include <optional>

namespace jqhost {

/// The size that a picture's header announces.
struct HeaderSize {
  std::uint64_t width = 0;
  std::uint64_t height = 0;

  /// Pixels, or the largest number where the product does not fit.
  std::uint64_t Pixels() const {
    return width != 0 && height > UINT64_MAX / width ? UINT64_MAX : width * height;
  }
};

/// Reads the size of a PNG, JPEG, TIFF (also BigTIFF), BMP, PNM, PFM, WebP, JPEG 2000
/// or Sun raster picture from its header, so that a picture which would fill the
/// memory can be refused before it is decoded. Of a TIFF's pages the first is read,
/// as the decoder does. Nothing where the header does not tell.
/// @param page of a TIFF, from 1; other formats have one
std::optional<HeaderSize> ReadHeaderSize(std::istream& file, int page = 1);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_HEADER_SIZE_H

#ifndef JQHOST_OUTPUT_PYRAMID_PYRAMID_H
#define JQHOST_OUTPUT_PYRAMID_PYRAMID_H

#include <string>

#include "host/output/pixel_source.h"
#include "host/output/save_options.h"
#include "host/run/stop_token.h"

namespace jqhost {

/// Formats of tiles in several sizes, for pictures too large to be opened whole.
enum class PyramidKind { kNone, kOmeTiff, kDeepZoom };

/// By the name: .ome.tif and .ome.tiff, or .dzi, in capitals too.
PyramidKind PyramidKindOf(const std::string& path);

/// Whether this build has libvips, which writes Deep Zoom.
bool HasLibvips();

/// Writes `folder`/`stem`.dzi and the tiles into `folder`/`stem`_files. Tiles of 254 x 254
/// that overlap by 1 pixel, levels down to 1 x 1, whose pixels are those of `HalvedPixels`.
/// Raises `InputError`.
/// @return false when the stop token ended it
bool WriteDeepZoom(const PixelSource& pixels, const SaveOptions& options, const std::string& folder,
                   const std::string& stem, const SaveProgress& progress, const StopToken& stop);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_PYRAMID_PYRAMID_H

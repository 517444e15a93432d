#ifndef JQHOST_OUTPUT_PYRAMID_PYRAMID_H
#define JQHOST_OUTPUT_PYRAMID_PYRAMID_H

#include <string>

#include "host/output/pixel_source.h"
#include "host/output/save_options.h"
#include "host/run/stop_token.h"

namespace jqhost {

/// Formats of tiles in several sizes, for pictures too large to be opened whole. They
/// are written with libvips, which a build may lack.
enum class PyramidKind { kNone, kOmeTiff, kDeepZoom };

/// By the name: .ome.tif and .ome.tiff, or .dzi, in capitals too.
PyramidKind PyramidKindOf(const std::string& path);

/// Whether this build writes pyramids, and TIFFs with a pixel size.
bool HasLibvips();

/// Side of the tiles of an OME-TIFF.
constexpr int kOmeTile = 512;

/// Whether a TIFF takes offsets of 64 bits. How small the tiles become is not known before
/// they are written; offsets of 32 bits do where tiles that cannot be packed, which even
/// grow a little, and those of the reduced levels end within 4 GB.
bool NeedsBigTiff(cv::Size size, int channels);

/// Writes the file; its name may be any. Tiles of 512 x 512, the reduced levels as
/// SubIFDs. Each pixel of a reduced level is
/// the mean of 2 x 2 of the level above, (sum + 2) / 4 per sample; an odd last row or
/// column of the level above is left out. Raises `InputError`.
/// @param shown the name for messages
/// @return false when the stop token ended it
bool WriteOmeTiff(const PixelSource& pixels, const SaveOptions& options, const std::string& file,
                  const SaveProgress& progress, const StopToken& stop);

/// Writes `folder`/`stem`.dzi and the tiles into `folder`/`stem`_files. Tiles of 254 x 254
/// that overlap by 1 pixel, levels down to 1 x 1. The means are those of `WriteOmeTiff`,
/// with an odd last row or column of the level above counted twice.
bool WriteDeepZoom(const PixelSource& pixels, const SaveOptions& options, const std::string& folder,
                   const std::string& stem, const SaveProgress& progress, const StopToken& stop);

/// Writes a plain TIFF, in strips, without loss, with resolution tags.
bool WriteTiff(const PixelSource& pixels, const SaveOptions& options, const std::string& file,
               const SaveProgress& progress, const StopToken& stop);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_PYRAMID_PYRAMID_H

#ifndef JQHOST_OUTPUT_TIFF_FILE_H
#define JQHOST_OUTPUT_TIFF_FILE_H

#include <string>

#include "host/output/pixel_source.h"
#include "host/output/save_options.h"
#include "host/run/stop_token.h"

namespace jqhost {

/// Side of the tiles of an OME-TIFF.
constexpr int kOmeTile = 512;

/// Whether a TIFF takes offsets of 64 bits. How small the tiles become is not known before
/// they are written; offsets of 32 bits do where tiles that cannot be packed, which even
/// grow a little, and those of the reduced levels end within 4 GB.
bool NeedsBigTiff(cv::Size size, int channels);

/// Writes an OME-TIFF into a file of any name: tiles of 512 x 512, the reduced levels
/// (`HalvedPixels`) as SubIFDs. Raises `InputError`.
/// @return false when the stop token ended it
bool WriteOmeTiff(const PixelSource& pixels, const SaveOptions& options, const std::string& file,
                  const SaveProgress& progress, const StopToken& stop);

/// The same of a plain TIFF: strips, LZW.
bool WriteTiff(const PixelSource& pixels, const SaveOptions& options, const std::string& file,
               const SaveProgress& progress, const StopToken& stop);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_TIFF_FILE_H

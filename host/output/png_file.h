#ifndef JQHOST_OUTPUT_PNG_FILE_H
#define JQHOST_OUTPUT_PNG_FILE_H

#include "host/output/atomic_file.h"
#include "host/output/pixel_source.h"
#include "host/output/save_options.h"
#include "host/run/stop_token.h"

namespace jqhost {

/// Writes a PNG row by row into the file, without committing it. The settings are those
/// of the image library, so that the bytes are what it would have written; the pixel
/// size, where it is known and fits, is added as a pHYs chunk (whole pixels per metre).
/// Raises `InputError`.
/// @return false when the stop token ended it
bool WritePng(const PixelSource& pixels, const SaveOptions& options, AtomicFile& file,
              const SaveProgress& progress, const StopToken& stop);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_PNG_FILE_H

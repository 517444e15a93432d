#ifndef JQHOST_OUTPUT_DISK_SPACE_H
#define JQHOST_OUTPUT_DISK_SPACE_H

#include "host/output/pixel_source.h"
#include "host/output/save_options.h"

namespace jqhost {

/// About how many bytes a picture takes when it is saved, told from blocks all over it;
/// exact for tiles that are not compressed.
double EstimateBytes(const PixelSource& pixels, const SaveOptions& options);

/// Raises `InputError` when the disk of `options.path` has less than four fifths of that
/// free: so much less than the estimate that the work would be in vain.
void CheckDiskSpace(const PixelSource& pixels, const SaveOptions& options);

/// "1.3 GB", "20 MB".
std::string BytesText(double bytes);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_DISK_SPACE_H

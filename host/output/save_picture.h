#ifndef JQHOST_OUTPUT_SAVE_PICTURE_H
#define JQHOST_OUTPUT_SAVE_PICTURE_H

#include <string>

#include "host/output/pixel_source.h"
#include "host/output/save_options.h"
#include "host/run/stop_token.h"

namespace jqhost {

/// Saves a picture under `options.path`: whole or not at all, and an earlier one stays
/// until then. PNG, OME-TIFF and Deep Zoom are written block by block from `view`, which
/// may be a part of the mosaic, without a copy of the whole; other formats go through
/// the image library, which takes copies. A disk that is clearly too small for PNG,
/// OME-TIFF or Deep Zoom is found before the work. Raises `InputError`.
///
/// May be called from any thread, and from several at once; nothing may write into the
/// pixels of `view` meanwhile.
/// @param view blue, green, red, or grey, 8 bits
/// @return false when the stop token ended it; then nothing has changed on the disk
bool SavePicture(const cv::Mat& view, const SaveOptions& options, const SaveProgress& progress,
                 const StopToken& stop);

/// The same of pixels of any kind. `background`, `grey` and `scaleBar` do nothing here.
bool SavePixels(const PixelSource& pixels, const SaveOptions& options, const SaveProgress& progress,
                const StopToken& stop);

struct SavedPicture {
  std::string path;     ///< empty when the stop token ended it
  std::string problem;  ///< why the path is not the one asked for; mostly empty
};

/// As `SavePicture`, but a picture that the format does not hold is saved as PNG under a
/// free name beside it, rather than lost.
SavedPicture SavePictureSomehow(const cv::Mat& view, const SaveOptions& options,
                                const SaveProgress& progress, const StopToken& stop);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_SAVE_PICTURE_H

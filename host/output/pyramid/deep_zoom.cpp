#include "host/output/pyramid/pyramid.h"
#include "host/output/pyramid/vips_pixels.h"
#include "host/system/plain_file.h"

namespace jqhost {

bool WriteDeepZoom(const PixelSource& pixels, const SaveOptions& options, const std::string& folder,
                   const std::string& stem, const SaveProgress& progress, const StopToken& stop) {
  VipsPixels source(pixels, options, progress, stop);
  const std::string path = folder + "/" + stem;
  const std::string suffix = options.compression == Compression::kJpeg
                                 ? ".jpg[Q=" + std::to_string(options.quality) + "]"
                                 : ".png[compression=6]";
  const bool saved = source.Finish(vips_dzsave(
      source.Image(), path.c_str(), "layout", VIPS_FOREIGN_DZ_LAYOUT_DZ, "suffix", suffix.c_str(),
      "tile_size", 254, "overlap", 1, "region_shrink", VIPS_REGION_SHRINK_MEAN, nullptr));
  // A note of libvips to itself, which belongs to no level.
  RemoveFile(path + "_files/vips-properties.xml");
  return saved;
}

}  // namespace jqhost

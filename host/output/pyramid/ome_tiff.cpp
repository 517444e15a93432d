#include "host/output/pyramid/ome_xml.h"
#include "host/output/pyramid/pyramid.h"
#include "host/output/pyramid/vips_pixels.h"

namespace jqhost {
namespace {

VipsForeignTiffCompression VipsCompression(Compression compression) {
  switch (compression) {
    case Compression::kNone:
      return VIPS_FOREIGN_TIFF_COMPRESSION_NONE;
    case Compression::kLzw:
      return VIPS_FOREIGN_TIFF_COMPRESSION_LZW;
    case Compression::kZstd:
      return VIPS_FOREIGN_TIFF_COMPRESSION_ZSTD;
    case Compression::kJpeg:
      return VIPS_FOREIGN_TIFF_COMPRESSION_JPEG;
    case Compression::kDeflate:
      break;
  }
  return VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE;
}

}  // namespace

bool WriteOmeTiff(const PixelSource& pixels, const SaveOptions& options, const std::string& file,
                  const SaveProgress& progress, const StopToken& stop) {
  VipsPixels source(pixels, options, progress, stop);
  const std::string xml = OmeXml(pixels.Size(), pixels.Channels(), options.pixelSize);
  vips_image_set_string(source.Image(), VIPS_META_IMAGEDESCRIPTION, xml.c_str());
  const bool lossless = options.compression != Compression::kJpeg;
  return source.Finish(vips_tiffsave(
      source.Image(), file.c_str(), "tile", TRUE, "tile_width", kOmeTile, "tile_height", kOmeTile,
      "pyramid", TRUE, "subifd", TRUE, "region_shrink", VIPS_REGION_SHRINK_MEAN, "compression",
      VipsCompression(options.compression), "predictor",
      lossless ? VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL : VIPS_FOREIGN_TIFF_PREDICTOR_NONE, "Q",
      options.quality, "bigtiff",
      static_cast<gboolean>(NeedsBigTiff(pixels.Size(), pixels.Channels())), nullptr));
}

bool WriteTiff(const PixelSource& pixels, const SaveOptions& options, const std::string& file,
               const SaveProgress& progress, const StopToken& stop) {
  VipsPixels source(pixels, options, progress, stop);
  return source.Finish(vips_tiffsave(
      source.Image(), file.c_str(), "compression", VIPS_FOREIGN_TIFF_COMPRESSION_LZW, "predictor",
      VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL, "bigtiff",
      static_cast<gboolean>(NeedsBigTiff(pixels.Size(), pixels.Channels())), nullptr));
}

}  // namespace jqhost

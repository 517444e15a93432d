#include "run/picture_options.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>

#include "host/output/picture_format.h"
#include "host/output/pyramid/pyramid.h"

using jqhost::Compression;
using jqhost::PyramidKind;

namespace jqstitch {
namespace {

constexpr double kSmallestPixel = 1e-11, kLargestPixel = 0.1;  // metres

std::array<int, 3> ParseColour(const std::string& text) {
  std::array<int, 3> colour{};
  char rest = 0;
  const bool digitsOnly = text.find_first_not_of("0123456789,") == std::string::npos;
  const int read =
      std::sscanf(text.c_str(), "%4d,%4d,%4d%c", colour.data(), &colour[1], &colour[2], &rest);
  if (!digitsOnly || read != 3 || colour[0] > 255 || colour[1] > 255 || colour[2] > 255) {
    throw CLI::ValidationError("--background",
                               "'" + text +
                                   "' is not a colour R,G,B of three numbers from 0 to 255, "
                                   "such as 255,255,255");
  }
  return colour;
}

double ParseLength(const std::string& text) {
  static const std::map<std::string, double> kUnits = {
      {"nm", 1e-9}, {"um", 1e-6}, {"\xc2\xb5m", 1e-6}, {"\xce\xbcm", 1e-6}, {"mm", 1e-3}};
  const std::size_t digits = text.find_first_not_of("0123456789.");
  double number = 0.0;
  const auto unit = kUnits.find(digits == std::string::npos ? "" : text.substr(digits));
  if (unit == kUnits.end() || !CLI::detail::lexical_cast(text.substr(0, digits), number)) {
    throw CLI::ValidationError("--pixel-size", "'" + text +
                                                   "' is not a length with its unit (nm, um, mm), "
                                                   "such as 0.345um");
  }
  const double metres = number * unit->second;
  if (!(metres >= kSmallestPixel && metres <= kLargestPixel)) {
    throw CLI::ValidationError("--pixel-size", "'" + text + "' is not from 0.01nm to 100mm");
  }
  return metres;
}

std::string CheckMaskName(const std::string& path) {
  if (jqhost::PictureExtension(path) == ".png") return std::string();
  return "'" + path + "' does not end in .png";
}

void AddPyramidOptions(CLI::App& command, PictureOptions& options) {
  const std::map<std::string, Compression> names = {{"none", Compression::kNone},
                                                    {"deflate", Compression::kDeflate},
                                                    {"lzw", Compression::kLzw},
                                                    {"zstd", Compression::kZstd},
                                                    {"jpeg", Compression::kJpeg}};
  command
      .add_option("--compression", options.compression,
                  "how the tiles of .ome.tif are packed: none, deflate, lzw, zstd or jpeg; those "
                  "of .dzi: deflate (PNG) or jpeg (deflate)")
      ->type_name("NAME")
      ->transform(CLI::CheckedTransformer(names).description(""));
  command.add_option("--quality", options.quality, "of --compression jpeg, 1 to 100 (90)")
      ->type_name("N")
      ->check(CLI::Range(1, 100));
}

// What no single option can check.
void CheckTogether(const PictureOptions& options) {
  const PyramidKind kind = jqhost::PyramidKindOf(options.output);
  if (options.compression && kind == PyramidKind::kNone) {
    throw CLI::ValidationError("--compression", "only .ome.tif and .dzi have one to choose");
  }
  if (options.compression && kind == PyramidKind::kDeepZoom &&
      *options.compression != Compression::kDeflate && *options.compression != Compression::kJpeg) {
    throw CLI::ValidationError("--compression", "the tiles of .dzi are packed by deflate or jpeg");
  }
  if (options.quality && options.compression != Compression::kJpeg) {
    throw CLI::ValidationError("--quality", "only --compression jpeg has one");
  }
  if (options.scaleBar && !options.pixelSize) {
    throw CLI::ValidationError("--scale-bar", "how long a bar is takes --pixel-size");
  }
}

}  // namespace

void AddPictureOptions(CLI::App& command, PictureOptions& options) {
  command
      .add_option("-o,--output", options.output,
                  "picture to write, such as mosaic.png; .ome.tif and .dzi have several sizes of "
                  "it in tiles")
      ->required()
      ->type_name("FILE");
  command.add_flag("--trim,!--no-trim", options.trim,
                   "cut the picture to the placed frames (default), or keep its black border");
  command
      .add_option_function<std::string>(
          "--background",
          [&options](const std::string& text) { options.background = ParseColour(text); },
          "colour of what no frame covers, 0 to 255 each (black)")
      ->type_name("R,G,B");
  AddPyramidOptions(command, options);
  command
      .add_option_function<std::string>(
          "--pixel-size",
          [&options](const std::string& text) { options.pixelSize = ParseLength(text); },
          "side of a frame's pixel, such as 0.345um (nm, um, mm); written into .ome.tif, .tif, "
          ".png and the reports")
      ->type_name("LENGTH");
  command.add_flag("--scale-bar", options.scaleBar,
                   "draw a scale bar into the picture; needs --pixel-size");
  command
      .add_option("--coverage", options.coverage,
                  "write a mask, FILE.png: white where a frame was placed")
      ->type_name("FILE")
      ->check(CheckMaskName);
  command.parse_complete_callback([&options] { CheckTogether(options); });
}

std::optional<cv::Size2d> PicturePixelSize(const PictureOptions& options, cv::Size frame,
                                           cv::Size workingFrame) {
  if (!options.pixelSize || workingFrame.empty()) return std::nullopt;
  return cv::Size2d(*options.pixelSize * frame.width / workingFrame.width,
                    *options.pixelSize * frame.height / workingFrame.height);
}

jqhost::SaveOptions MakeSaveOptions(const PictureOptions& options, bool grey,
                                    const std::optional<cv::Size2d>& pixelSize) {
  jqhost::SaveOptions save;
  save.path = options.output;
  save.background = options.background;
  save.grey = grey;
  save.pixelSize = pixelSize;
  save.scaleBar = options.scaleBar;
  save.compression = options.compression.value_or(save.compression);
  save.quality = options.quality.value_or(save.quality);
  return save;
}

}  // namespace jqstitch

#include <algorithm>
#include <cctype>
#include <string_view>

#include "host/output/pyramid/pyramid.h"

namespace jqhost {
namespace {

bool EndsWith(const std::string& text, std::string_view end) {
  return text.size() > end.size() &&
         std::equal(end.rbegin(), end.rend(), text.rbegin(), [](char a, char b) {
           return a == std::tolower(static_cast<unsigned char>(b));
         });
}

}  // namespace

PyramidKind PyramidKindOf(const std::string& path) {
  if (EndsWith(path, ".ome.tif") || EndsWith(path, ".ome.tiff")) return PyramidKind::kOmeTiff;
  return EndsWith(path, ".dzi") ? PyramidKind::kDeepZoom : PyramidKind::kNone;
}

bool NeedsBigTiff(cv::Size size, int channels) {
  // The tiles at the edges are filled up. Each level has a quarter of the one above.
  const double filled = (size.width + kOmeTile - 1.0) * (size.height + kOmeTile - 1.0) * channels;
  constexpr double kGrowth = 1.05, kLevels = 4.0 / 3.0, kTables = 16e6;
  return filled * kLevels * kGrowth + kTables > 4294967295.0;
}

}  // namespace jqhost

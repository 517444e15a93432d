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

}  // namespace jqhost

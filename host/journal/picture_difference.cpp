#include "host/journal/picture_difference.h"

#include <algorithm>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <set>

#include "host/input_error.h"
#include "host/output/pyramid/deep_zoom_place.h"
#include "host/size_text.h"
#include "host/source/picture_reader.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

constexpr std::int64_t kMostTilePixels = 1 << 20;

// Paths of all files below a folder, relative to it, in order.
std::set<std::string> FilesBelow(const std::string& folder) {
  std::set<std::string> files;
  std::error_code error;
  fs::recursive_directory_iterator entries(folder, error);
  if (error) throw InputError("cannot read '" + folder + "': " + error.message());
  for (const fs::directory_entry& entry : entries) {
    if (!entry.is_directory()) files.insert(fs::relative(entry.path(), folder).string());
  }
  return files;
}

std::string DifferenceOfTile(const fs::path& saved, const fs::path& painted,
                             const std::string& tile) {
  const std::string name = "its tile '" + tile + "' ";
  const std::string path = (saved / tile).string();
  if (!fs::exists(path)) return name + "is missing";
  std::string why;
  const cv::Mat own = ReadPicture(path, cv::IMREAD_UNCHANGED, why, kMostTilePixels);
  if (own.empty()) return name + "cannot be read: " + why;
  const std::string difference =
      PixelDifference(own, ReadWhole((painted / tile).string(), kMostTilePixels));
  return difference.empty() ? difference : name + "is another one: " + difference;
}

}  // namespace

cv::Mat ReadWhole(const std::string& path, std::int64_t maxPixels) {
  std::string why;
  cv::Mat picture = ReadPicture(path, cv::IMREAD_UNCHANGED, why, maxPixels);
  if (picture.empty()) throw InputError("cannot read '" + path + "': " + why);
  return picture;
}

std::string PixelDifference(const cv::Mat& saved, const cv::Mat& painted) {
  if (saved.size() != painted.size()) {
    return "it has " + SizeText(saved.size()) + " pixels instead of " + SizeText(painted.size());
  }
  if (saved.type() != painted.type()) return "its pixels are of another kind";
  std::int64_t count = 0;
  cv::Rect where;
  const std::size_t pixel = saved.elemSize();
  for (int r = 0; r < saved.rows; ++r) {
    const unsigned char *a = saved.ptr(r), *b = painted.ptr(r);
    if (std::equal(a, a + pixel * static_cast<std::size_t>(saved.cols), b)) continue;
    for (int c = 0; c < saved.cols; ++c, a += pixel, b += pixel) {
      if (std::equal(a, a + pixel, b)) continue;
      ++count;
      where |= cv::Rect(c, r, 1, 1);
    }
  }
  if (count == 0) return std::string();
  return std::to_string(count) + (count == 1 ? " pixel differs" : " pixels differ") +
         ", within columns " + std::to_string(where.x) + " to " + std::to_string(where.br().x - 1) +
         " and rows " + std::to_string(where.y) + " to " + std::to_string(where.br().y - 1);
}

std::string TileDifference(const std::string& saved, const std::string& painted) {
  const std::string savedTiles = DeepZoomTiles(saved), paintedTiles = DeepZoomTiles(painted);
  if (!fs::exists(saved)) throw InputError("cannot read '" + saved + "': it is not there");
  const std::set<std::string> there = FilesBelow(savedTiles);
  const std::set<std::string> expected = FilesBelow(paintedTiles);
  for (const std::string& tile : there) {
    if (expected.count(tile) == 0) return "it has a tile '" + tile + "' too many";
  }
  for (const std::string& tile : expected) {
    std::string difference = DifferenceOfTile(savedTiles, paintedTiles, tile);
    if (!difference.empty()) return difference;
  }
  return std::string();
}

}  // namespace jqhost

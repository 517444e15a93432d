#include "host/output/pyramid/deep_zoom_place.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/system/plain_file.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

bool IsLevel(const fs::directory_entry& entry) {
  const std::string name = entry.path().filename().string();
  std::error_code error;
  return entry.is_directory(error) && std::all_of(name.begin(), name.end(), [](unsigned char c) {
           return std::isdigit(c) != 0;
         });
}

}  // namespace

std::string DeepZoomTiles(const std::string& path) {
  return fs::path(path).replace_extension().string() + "_files";
}

void CheckDeepZoomPlace(const std::string& path) {
  const std::string tiles = DeepZoomTiles(path);
  std::error_code error;
  if (!fs::exists(fs::symlink_status(tiles, error))) return;
  const bool isFolder = fs::is_directory(fs::symlink_status(tiles, error));
  fs::directory_iterator entries;
  if (isFolder) entries = fs::directory_iterator(tiles, error);
  if (!isFolder || error || !std::all_of(begin(entries), end(entries), IsLevel)) {
    throw InputError("cannot write '" + path + "': its tiles would replace '" + tiles +
                     "', which holds something else (choose another name)");
  }
}

void MoveDeepZoom(const std::string& folder, const std::string& path) {
  const std::string made = folder + "/picture_files", tiles = DeepZoomTiles(path);
  std::error_code ignored;
  const bool replaces = fs::exists(tiles, ignored);
  const std::error_code moved = replaces ? ExchangeFolders(made, tiles) : ReplaceFile(made, tiles);
  if (moved) throw InputError(WriteFailure(tiles, moved));
  const std::error_code followed = ReplaceFile(folder + "/picture.dzi", path);
  if (!followed) return;
  if (replaces) {
    ExchangeFolders(made, tiles);
  } else {
    ReplaceFile(tiles, made);
  }
  throw InputError(WriteFailure(path, followed));
}

}  // namespace jqhost

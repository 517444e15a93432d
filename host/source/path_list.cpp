#include "host/source/path_list.h"

#include <QCollator>
#include <QLocale>
#include <QString>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <opencv2/imgcodecs.hpp>

#include "host/input_error.h"
#include "host/source/picture_reader.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

constexpr const char* kExtensions[] = {".bmp", ".dib",  ".jpg", ".jpeg", ".jpe", ".jp2",
                                       ".png", ".webp", ".pbm", ".pgm",  ".ppm", ".pnm",
                                       ".pxm", ".pfm",  ".ras", ".sr",   ".tif", ".tiff"};

bool HasPictureExtension(const fs::path& path) {
  std::string extension = path.extension().string();
  for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return std::find(std::begin(kExtensions), std::end(kExtensions), extension) !=
         std::end(kExtensions);
}

bool IsOneOf(const fs::path& path, const std::vector<std::string>& others) {
  return std::any_of(others.begin(), others.end(),
                     [&](const std::string& other) { return IsSameFile(path.string(), other); });
}

void RefuseFrameAsOutput(const std::string& output, const std::string& frame) {
  std::string why;
  const cv::Size size = ReadPicture(output, cv::IMREAD_COLOR, why).size();
  if (!size.empty() && size == ReadPicture(frame, cv::IMREAD_COLOR, why).size()) {
    throw InputError("'" + output +
                     "' looks like one of the frames and would be overwritten; "
                     "choose another name");
  }
}

struct FolderContent {
  std::vector<std::string> pictures, outputs;  // outputs: those of the run itself
  bool hasFolders = false;
};

FolderContent LookInto(const std::string& folder, const std::vector<std::string>& leftOut) {
  FolderContent content;
  try {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
      const fs::path& path = entry.path();
      if (path.filename().string().front() == '.') continue;
      std::error_code error;
      if (entry.is_directory(error)) {
        content.hasFolders = true;
      } else if (HasPictureExtension(path)) {
        (IsOneOf(path, leftOut) ? content.outputs : content.pictures).push_back(path.string());
      }
    }
  } catch (const fs::filesystem_error& error) {
    throw InputError("cannot read the folder '" + folder + "': " + error.code().message());
  }
  return content;
}

QString NameOf(const std::string& path) {
  return QString::fromLocal8Bit(fs::path(path).filename().c_str());
}

}  // namespace

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return fs::equivalent(a, b, error) && !error;
}

void SortNaturally(std::vector<std::string>& paths) {
  // The C locale has no numeric order, so the locale is named.
  QCollator collator{QLocale(QLocale::English)};
  collator.setNumericMode(true);
  std::vector<std::pair<QString, std::string>> named;
  named.reserve(paths.size());
  for (const std::string& path : paths) named.emplace_back(NameOf(path), path);
  std::stable_sort(named.begin(), named.end(), [&](const auto& a, const auto& b) {
    const int order = collator.compare(a.first, b.first);
    return order != 0 ? order < 0 : a.second < b.second;
  });
  std::transform(named.begin(), named.end(), paths.begin(),
                 [](const auto& entry) { return entry.second; });
}

bool LooksSortedByBytes(const std::vector<std::string>& paths) {
  if (paths.size() < 3 || !std::is_sorted(paths.begin(), paths.end())) return false;
  const fs::path folder = fs::path(paths.front()).parent_path();
  for (const std::string& path : paths) {
    if (fs::path(path).parent_path() != folder) return false;
  }
  std::vector<std::string> natural = paths;
  SortNaturally(natural);
  return natural != paths;
}

std::vector<std::string> FindPictures(const std::string& folder,
                                      const std::vector<std::string>& leftOut) {
  FolderContent content = LookInto(folder, leftOut);
  SortNaturally(content.pictures);
  return content.pictures;
}

std::vector<std::string> ListPictures(const std::string& folder,
                                      const std::vector<std::string>& leftOut) {
  const FolderContent content = LookInto(folder, leftOut);
  std::vector<std::string> pictures = content.pictures;
  if (pictures.empty()) {
    throw InputError("the folder '" + folder + "' holds no pictures" +
                     (content.hasFolders
                          ? " (those of its subfolders are not taken; name a subfolder)"
                          : " (looked for .png, .jpg, .tif, .bmp and the like)"));
  }
  SortNaturally(pictures);
  for (const std::string& output : content.outputs) RefuseFrameAsOutput(output, pictures.front());
  return pictures;
}

std::vector<std::string> ReadPathList(const std::string& file) {
  std::ifstream stream;
  std::error_code error;
  if (file != "-") {
    if (fs::is_directory(file, error)) {
      throw InputError("cannot read the list '" + file + "': it is a folder");
    }
    // A pipe is opened once: its writer would break with the first reader.
    if (fs::is_regular_file(file, error) && WhyNotPicture(file).empty()) {
      throw InputError("cannot read the list '" + file +
                       "': it is a picture; a list is a text with one path a line (give pictures "
                       "without --list)");
    }
    stream.open(file);
    if (!stream) {
      throw InputError("cannot read the list '" + file +
                       "': " + std::error_code(errno, std::generic_category()).message());
    }
  }
  std::istream& input = file == "-" ? std::cin : stream;
  std::vector<std::string> paths;
  for (std::string line; std::getline(input, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty()) paths.push_back(line);
  }
  if (input.bad()) throw InputError("cannot read the list '" + file + "' to its end");
  if (paths.empty()) {
    throw InputError(file == "-" ? std::string("standard input names no files")
                                 : "the list '" + file + "' names no files");
  }
  return paths;
}

std::vector<std::string> ExpandFolders(const std::vector<std::string>& paths,
                                       const std::vector<std::string>& leftOut) {
  std::vector<std::string> files;
  for (const std::string& path : paths) {
    std::error_code error;
    if (fs::is_directory(path, error)) {
      const std::vector<std::string> pictures = ListPictures(path, leftOut);
      files.insert(files.end(), pictures.begin(), pictures.end());
    } else {
      files.push_back(path);
    }
  }
  return files;
}

}  // namespace jqhost

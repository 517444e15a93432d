#include "host/source/picture_reader.h"

#include <filesystem>
#include <fstream>
#include <opencv2/imgcodecs.hpp>

#include "host/source/guarded_decode.h"
#include "host/source/header_size.h"

namespace jqhost {
namespace {

std::string WhyNotPlain(const PinnedFile& file) {
  switch (file.Kind()) {
    case FileKind::kMissing:
      return "there is no such file";
    case FileKind::kFolder:
      return "it is a folder";
    case FileKind::kPipe:
      return "it is a pipe, not a file";
    case FileKind::kOther:
      return "it is not a plain file";
    case FileKind::kUnknown:
    case FileKind::kPlain:
      break;
  }
  return file.Error() ? file.Error().message() : std::string();
}

// What the header does not tell is left to the decoder and its own limits.
std::string WhyTooManyPixels(const std::string& path, std::int64_t maxPixels, int page) {
  std::ifstream stream(path, std::ios::binary);
  const std::optional<HeaderSize> size = ReadHeaderSize(stream, page);
  if (!size || size->Pixels() <= static_cast<std::uint64_t>(maxPixels)) return std::string();
  return "its header announces " + std::to_string(size->width) + " x " +
         std::to_string(size->height) + " pixels, more than the " + std::to_string(maxPixels) +
         " allowed (--max-pixels)";
}

}  // namespace

std::string WhyNotPicture(const PinnedFile& file, std::int64_t maxPixels, int page) {
  std::string why = WhyNotPlain(file);
  if (!why.empty()) return why;
  std::error_code error;
  if (std::filesystem::file_size(file.Path(), error) == 0) return "the file is empty";
  try {
    if (!cv::haveImageReader(file.Path())) return "it is not a picture of a known format";
  } catch (const cv::Exception& raised) {
    return raised.err;
  }
  return WhyTooManyPixels(file.Path(), maxPixels, page);
}

std::string WhyNotPicture(const std::string& path, std::int64_t maxPixels) {
  return WhyNotPicture(PinnedFile(path), maxPixels);
}

cv::Mat ReadPicture(const PinnedFile& file, int flags, std::string& why, std::int64_t maxPixels) {
  why = WhyNotPicture(file, maxPixels);
  if (!why.empty()) return cv::Mat();
  return GuardedDecode([&] { return cv::imread(file.Path(), flags); }, "it is damaged or cut short",
                       why);
}

cv::Mat ReadPicture(const std::string& path, int flags, std::string& why, std::int64_t maxPixels) {
  return ReadPicture(PinnedFile(path), flags, why, maxPixels);
}

}  // namespace jqhost

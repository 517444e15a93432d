#include "host/source/picture_reader.h"

#include <filesystem>
#include <opencv2/imgcodecs.hpp>

#include "host/system/plain_file.h"

namespace jqhost {

std::string WhyNotPicture(const std::string& path) {
  std::error_code error;
  switch (KindOfFile(path, error)) {
    case FileKind::kMissing:
      return "there is no such file";
    case FileKind::kFolder:
      return "it is a folder";
    case FileKind::kPipe:
      return "it is a pipe, not a file";
    case FileKind::kOther:
      return "it is not a plain file";
    case FileKind::kUnknown:
      return error.message();
    case FileKind::kPlain:
      break;
  }
  if (std::filesystem::file_size(path, error) == 0) return "the file is empty";
  if (const std::error_code why = WhyNotReadable(path)) return why.message();
  try {
    if (!cv::haveImageReader(path)) return "it is not a picture of a known format";
  } catch (const cv::Exception& raised) {
    return raised.err;
  }
  return std::string();
}

cv::Mat ReadPicture(const std::string& path, int flags, std::string& why) {
  why = WhyNotPicture(path);
  if (!why.empty()) return cv::Mat();
  cv::Mat picture;
  try {
    picture = cv::imread(path, flags);
  } catch (const cv::Exception& raised) {
    why = "it cannot be decoded (" + raised.err + ")";
    return cv::Mat();
  }
  if (picture.empty()) why = "it is damaged or cut short";
  return picture;
}

}  // namespace jqhost

#include "input/picture_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <opencv2/imgcodecs.hpp>

namespace jqstitch {

std::string WhyNotPicture(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    return errno == ENOENT ? "there is no such file" : std::strerror(errno);
  }
  if (S_ISDIR(status.st_mode)) return "it is a folder";
  if (S_ISFIFO(status.st_mode)) return "it is a pipe, not a file";
  if (!S_ISREG(status.st_mode)) return "it is not a plain file";
  if (status.st_size == 0) return "the file is empty";
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::strerror(errno);
  close(file);
  try {
    if (!cv::haveImageReader(path)) return "it is not a picture of a known format";
  } catch (const cv::Exception& error) {
    return error.err;
  }
  return std::string();
}

cv::Mat ReadPicture(const std::string& path, int flags, std::string& why) {
  why = WhyNotPicture(path);
  if (!why.empty()) return cv::Mat();
  cv::Mat picture;
  try {
    picture = cv::imread(path, flags);
  } catch (const cv::Exception& error) {
    why = "it cannot be decoded (" + error.err + ")";
    return cv::Mat();
  }
  if (picture.empty()) why = "it is damaged or cut short";
  return picture;
}

}  // namespace jqstitch

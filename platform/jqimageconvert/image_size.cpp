#include <QByteArray>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <opencv2/imgcodecs.hpp>
#include <string>
#include <system_error>

#include "image_header.h"
#include "jqimageconvert.h"

namespace {

cv::Size sizeFromHeader(const std::string& path) {
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  const std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "rb"));
  if (!file) return {};
  const int first = std::fgetc(file.get());
  std::rewind(file.get());
  if (first == 0x89) return jqheader::pngSize(file.get());
  if (first == 0xFF) return jqheader::jpegSize(file.get());
  return {};
}

// The size that cv::imread(path, 1) gives, 0 x 0 when it gives none.
cv::Size imageSize(const std::string& path) {
  // A pipe or a device can be read only once, and the run has to read it again.
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return {};
  const cv::Size size = sizeFromHeader(path);
  if (size != cv::Size()) return size;
  try {
    return cv::imread(path, cv::IMREAD_COLOR).size();
  } catch (const cv::Exception&) {
    return {};  // a size beyond the image library's limits
  }
}

}  // namespace

bool IsImageSizeMatched(const QList<QString>& files) {
  cv::Size common;
  for (const QString& file : files) {
    // Up to the first zero byte, as every file function sees it.
    const cv::Size size = imageSize(std::string(file.toLocal8Bit().constData()));
    if (size == cv::Size()) return false;
    if (common == cv::Size()) common = size;
    if (size != common) return false;
  }
  return !files.isEmpty();
}

#include <QByteArray>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <string>
#include <system_error>

#include "jqimageconvert.h"

namespace {

// The size that cv::imread(path, 1) gives, 0 x 0 when it gives none. Only a decode
// can tell: a file may be whole, with right checksums, and still hold nothing that
// the image library reads, and a header's sides may be swapped by an orientation tag.
cv::Size imageSize(const std::string& path) {
  // A pipe or a device can be read only once, and the run has to read it again.
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return {};
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

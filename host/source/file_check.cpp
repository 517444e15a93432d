#include "host/source/file_check.h"

#include <QString>
#include <algorithm>
#include <opencv2/imgcodecs.hpp>

#include "host/source/picture_reader.h"

namespace jqhost {
namespace {

bool SurvivesAsText(const std::string& path) {
  return QString::fromLocal8Bit(path.c_str()).toLocal8Bit().toStdString() == path;
}

int CountBad(const std::vector<FrameResult>& results) {
  return static_cast<int>(std::count_if(results.begin(), results.end(), [](const FrameResult& r) {
    return r.cause != Cause::kNotReached;
  }));
}

// The size of most files; the first of equals.
cv::Size CommonSize(const std::vector<cv::Size>& sizes) {
  cv::Size common;
  std::ptrdiff_t most = 0;
  for (const cv::Size& size : sizes) {
    if (size.empty()) continue;
    const std::ptrdiff_t count = std::count(sizes.begin(), sizes.end(), size);
    if (count > most) {
      most = count;
      common = size;
    }
  }
  return common;
}

}  // namespace

int FindUnfitFiles(const std::vector<PinnedFile>& files, std::int64_t maxPixels,
                   std::vector<FrameResult>& results) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    const std::string why = SurvivesAsText(results[i].name)
                                ? WhyNotPicture(files[i], maxPixels)
                                : "its name is not valid UTF-8 (rename it)";
    if (!why.empty()) SetUnreadable(why, results[i]);
  }
  return CountBad(results);
}

int FindOddFiles(const std::vector<PinnedFile>& files, std::int64_t maxPixels,
                 std::vector<FrameResult>& results) {
  std::vector<cv::Size> sizes(files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (results[i].cause != Cause::kNotReached) continue;
    std::string why;
    sizes[i] = ReadPicture(files[i], cv::IMREAD_COLOR, why, maxPixels).size();
    if (!why.empty()) SetUnreadable(why, results[i]);
  }
  const cv::Size common = CommonSize(sizes);
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (!sizes[i].empty() && sizes[i] != common) SetSizeDiffers(sizes[i], common, results[i]);
  }
  return CountBad(results);
}

}  // namespace jqhost

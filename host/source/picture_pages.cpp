#include "host/source/picture_pages.h"

#include <cstdint>
#include <opencv2/imgcodecs.hpp>

#include "host/source/guarded_decode.h"
#include "host/source/sample_depth.h"
#include "host/source/tiff_pages.h"

namespace jqhost {
namespace {

constexpr std::int64_t kAnySize = INT64_MAX;
constexpr int kAsStored = cv::IMREAD_ANYDEPTH | cv::IMREAD_ANYCOLOR;

cv::Mat ReadPage(const PinnedFile& file, int page, std::string& why) {
  const auto decode = [&] {
    std::vector<cv::Mat> pages;
    const bool read = cv::imreadmulti(file.Path(), pages, page - 1, 1, kAsStored);
    return read && !pages.empty() ? pages.front() : cv::Mat();
  };
  return GuardedDecode(decode, "this page is damaged or cut short", why);
}

}  // namespace

std::string NameOf(const PictureId& picture) {
  return picture.page == 0 ? picture.path : picture.path + " page " + std::to_string(picture.page);
}

std::vector<PictureId> ExpandPages(const std::vector<std::string>& files) {
  std::vector<PictureId> pictures;
  pictures.reserve(files.size());
  for (const std::string& file : files) {
    const PinnedFile pinned(file);
    // Each page is judged by its own size, when it is read.
    const int pages = WhyNotPicture(pinned, kAnySize).empty() ? CountTiffPages(pinned.Path()) : 0;
    if (pages < 2) pictures.push_back({file, 0});
    for (int page = 1; pages >= 2 && page <= pages; ++page) pictures.push_back({file, page});
  }
  return pictures;
}

cv::Mat ReadStored(const PictureId& picture, std::string& why, std::int64_t maxPixels) {
  const PinnedFile file(picture.path);
  cv::Mat stored;
  if (picture.page == 0) {
    stored = ReadPicture(file, kAsStored, why, maxPixels);
  } else {
    why = WhyNotPicture(file, maxPixels, picture.page);
    if (why.empty()) stored = ReadPage(file, picture.page, why);
  }
  if (!stored.empty()) why = WhyNotSamples(stored);
  return why.empty() ? stored : cv::Mat();
}

}  // namespace jqhost

#include <opencv2/imgcodecs.hpp>

#include "reference/stitcher.h"

namespace reference {
namespace {

[[noreturn]] void Refuse() {
  throw cv::Exception(cv::Error::StsBadArg, "bad record", "", __FILE__, __LINE__);
}

}  // namespace

void ConvertJQImgToCv8UC3(const _tagJQIMG* img, cv::Mat& out) {
  if (img == nullptr || img->width == 0 || img->height == 0 || img->pixels == nullptr) Refuse();
  if (img->format != 0) Refuse();
  const int channels = img->channels;
  const int depth = img->bytesPerChannel;
  if (channels != 1 && channels != 3 && channels != 4) Refuse();
  if (depth != 1 && depth != 2) Refuse();
  const long long line = img->bytesPerLine;
  if (line < 1LL * img->width * channels * depth) Refuse();
  if (img->bufferSize < line * img->height) Refuse();

  out.create(img->height, img->width, CV_8UC3);
  for (int y = 0; y < img->height; ++y) {
    for (int x = 0; x < img->width; ++x) {
      for (int c = 0; c < 3; ++c) {
        const int from = channels == 1 ? 0 : c;
        const unsigned char* sample = img->pixels + y * line + (1LL * x * channels + from) * depth;
        out.at<cv::Vec3b>(y, x)[c] = sample[depth - 1];
      }
    }
  }
}

bool IsImageSizeMatched(const std::vector<std::string>& files) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    const cv::Mat picture = cv::imread(files[i], 1);
    if (picture.empty()) return false;
    if (picture.size() != cv::imread(files[0], 1).size()) return false;
  }
  return !files.empty();
}

}  // namespace reference

#include "host/source/sample_depth.h"

#include <algorithm>
#include <cstdint>

namespace jqhost {
namespace {

constexpr int kDepths[] = {8, 10, 12, 14, 16};

}  // namespace

bool IsSampleDepth(int bits) {
  return std::find(std::begin(kDepths), std::end(kDepths), bits) != std::end(kDepths);
}

int LargestSample(const cv::Mat& picture) {
  const int samples = picture.cols * picture.channels();
  int largest = 0;
  for (int r = 0; r < picture.rows; ++r) {
    const std::uint16_t* row = picture.ptr<std::uint16_t>(r);
    for (int i = 0; i < samples; ++i) largest = std::max<int>(largest, row[i]);
  }
  return largest;
}

int SmallestDepth(int largestSample) {
  return *std::find_if(std::begin(kDepths), std::end(kDepths),
                       [largestSample](int bits) { return largestSample < (1 << bits); });
}

cv::Mat ScaleToEightBits(const cv::Mat& picture, int bits) {
  cv::Mat scaled(picture.size(), CV_8UC(picture.channels()));
  const int samples = picture.cols * picture.channels();
  const int limit = (1 << bits) - 1;
  const int shift = bits - 8;
  for (int r = 0; r < picture.rows; ++r) {
    const std::uint16_t* from = picture.ptr<std::uint16_t>(r);
    std::uint8_t* to = scaled.ptr<std::uint8_t>(r);
    for (int i = 0; i < samples; ++i) {
      to[i] = static_cast<std::uint8_t>(std::min<int>(from[i], limit) >> shift);
    }
  }
  return scaled;
}

std::string WhyNotSamples(const cv::Mat& picture) {
  const char* name = nullptr;
  switch (picture.depth()) {
    case CV_8U:
    case CV_16U:
      return std::string();
    case CV_8S:
      name = "signed 8-bit";
      break;
    case CV_16S:
      name = "signed 16-bit";
      break;
    case CV_32S:
      name = "32-bit integer";
      break;
    case CV_32F:
      name = "32-bit float";
      break;
    case CV_64F:
      name = "64-bit float";
      break;
    default:
      name = "16-bit float";
  }
  return std::string("it has ") + name + " samples; frames have unsigned ones of 8 or 16 bits";
}

}  // namespace jqhost

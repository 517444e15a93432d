#include "host/output/thumbnail.h"

#include <opencv2/imgcodecs.hpp>

#include "host/output/picture.h"

namespace jqhost {
namespace {

constexpr int kLongestSide = 128;
constexpr int kQuality = 75;

}  // namespace

std::vector<unsigned char> Thumbnail(const cv::Mat& frame) {
  cv::Mat small = Shrink(frame, kLongestSide);
  // The high byte, as the stitcher takes the samples.
  if (small.depth() == CV_16U) small.convertTo(small, CV_8U, 1.0 / 256);
  std::vector<unsigned char> bytes;
  try {
    cv::imencode(".jpg", small, bytes, {cv::IMWRITE_JPEG_QUALITY, kQuality});
  } catch (const cv::Exception&) {
    bytes.clear();
  }
  return bytes;
}

}  // namespace jqhost

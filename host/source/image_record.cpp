#include "host/source/image_record.h"

#include <cstring>
#include <limits>

#include "jqimageconvert.h"
#include "jqstitchingalgorithm.h"

namespace jqhost {

std::string WhyNoRecord(const cv::Mat& picture) {
  if (picture.empty()) return "the frame is empty";
  if (picture.depth() != CV_8U && picture.depth() != CV_16U) {
    return "its samples are neither 8 nor 16 bits wide";
  }
  if (picture.channels() != 1 && picture.channels() != 3 && picture.channels() != 4) {
    return "it has " + std::to_string(picture.channels()) + " channels instead of 1, 3 or 4";
  }
  constexpr int kLongestSide = std::numeric_limits<std::uint16_t>::max();
  if (picture.cols > kLongestSide || picture.rows > kLongestSide) {
    return "it has " + std::to_string(picture.cols) + " x " + std::to_string(picture.rows) +
           " pixels, more than the 65535 a side that a frame can have";
  }
  if (picture.step[0] * static_cast<std::size_t>(picture.rows) >
      std::numeric_limits<std::uint32_t>::max()) {
    return "its pixels take more than 4 GiB";
  }
  return std::string();
}

_tagJQIMG MakeRecord(const cv::Mat& picture) {
  _tagJQIMG record;
  std::memset(&record, 0, sizeof record);
  record.width = static_cast<std::uint16_t>(picture.cols);
  record.height = static_cast<std::uint16_t>(picture.rows);
  record.bytesPerLine = static_cast<std::int32_t>(picture.step[0]);
  record.format = 0;
  record.channels = static_cast<std::uint8_t>(picture.channels());
  record.bytesPerChannel = static_cast<std::uint8_t>(picture.elemSize1());
  record.bufferSize =
      static_cast<std::uint32_t>(picture.step[0] * static_cast<std::size_t>(picture.rows));
  record.pixels = picture.data;
  return record;
}

cv::Mat AsTakenIn(const cv::Mat& picture) {
  _tagJQIMG record = MakeRecord(picture);
  cv::Mat taken;
  ConvertJQImgToCv8UC3(&record, taken);
  JQStitchingAlgorithm().JudgeImageChannel(taken, taken);
  return taken;
}

}  // namespace jqhost

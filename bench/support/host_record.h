#ifndef JQ_BENCH_SUPPORT_HOST_RECORD_H
#define JQ_BENCH_SUPPORT_HOST_RECORD_H

#include <opencv2/core.hpp>

#include "jqglobalclass.h"

namespace jqbench {

/// The record that a camera host hands over for `frame`; it points to the
/// frame's own pixels.
inline _tagJQIMG HostRecord(const cv::Mat& frame) {
  _tagJQIMG record{};
  record.width = static_cast<std::uint16_t>(frame.cols);
  record.height = static_cast<std::uint16_t>(frame.rows);
  record.bytesPerLine = static_cast<std::int32_t>(frame.step);
  record.channels = static_cast<std::uint8_t>(frame.channels());
  record.bytesPerChannel = 1;
  record.bufferSize = static_cast<std::uint32_t>(frame.step * static_cast<size_t>(frame.rows));
  record.pixels = frame.data;
  return record;
}

}  // namespace jqbench

#endif  // JQ_BENCH_SUPPORT_HOST_RECORD_H

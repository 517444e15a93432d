#include "host/source/genicam_pixels.h"

#include <algorithm>
#include <cstdio>
#include <opencv2/imgproc.hpp>

namespace jqhost {
namespace {

constexpr int kAsItIs = -1;

struct Format {
  std::uint32_t code;
  int type;        // of the samples in the buffer
  int conversion;  // to grey or blue-green-red
};

// The image library names a colour filter by the second row's second and third pixel, the
// standard by the first row's first two.
constexpr Format kFormats[] = {
    {0x01080001, CV_8UC1, kAsItIs},                // Mono8
    {0x01100003, CV_16UC1, kAsItIs},               // Mono10
    {0x01100005, CV_16UC1, kAsItIs},               // Mono12
    {0x01100025, CV_16UC1, kAsItIs},               // Mono14
    {0x01100007, CV_16UC1, kAsItIs},               // Mono16
    {0x01080008, CV_8UC1, cv::COLOR_BayerGB2BGR},  // BayerGR8
    {0x01080009, CV_8UC1, cv::COLOR_BayerBG2BGR},  // BayerRG8
    {0x0108000A, CV_8UC1, cv::COLOR_BayerGR2BGR},  // BayerGB8
    {0x0108000B, CV_8UC1, cv::COLOR_BayerRG2BGR},  // BayerBG8
    {0x02180014, CV_8UC3, cv::COLOR_RGB2BGR},      // RGB8
    {0x02180015, CV_8UC3, kAsItIs},                // BGR8
};

}  // namespace

cv::Mat FrameFromBuffer(std::uint32_t format, const void* bytes, std::size_t length, cv::Size size,
                        std::string& why) {
  const Format* found = std::find_if(std::begin(kFormats), std::end(kFormats),
                                     [format](const Format& f) { return f.code == format; });
  if (found == std::end(kFormats)) {
    char code[16];
    std::snprintf(code, sizeof code, "0x%08X", static_cast<unsigned>(format));
    why = std::string("its pixel format ") + code + " is not known";
    return cv::Mat();
  }
  const std::size_t needed = static_cast<std::size_t>(CV_ELEM_SIZE(found->type)) *
                             static_cast<std::size_t>(std::max(0, size.width)) *
                             static_cast<std::size_t>(std::max(0, size.height));
  if (needed == 0 || bytes == nullptr || length < needed) {
    why = "it came incomplete";
    return cv::Mat();
  }
  // Only read: the matrix has no other way to look at bytes that are not its own.
  const cv::Mat seen(size, found->type, const_cast<void*>(bytes));
  cv::Mat frame;
  if (found->conversion == kAsItIs) {
    seen.copyTo(frame);
  } else {
    cv::cvtColor(seen, frame, found->conversion);
  }
  return frame;
}

}  // namespace jqhost

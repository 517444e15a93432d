#ifndef JQHOST_SOURCE_GENICAM_PIXELS_H
#define JQHOST_SOURCE_GENICAM_PIXELS_H

#include <cstddef>
#include <cstdint>
#include <opencv2/core.hpp>
#include <string>

namespace jqhost {

/// The frame that lies in a buffer of a GenICam camera: grey of 8 to 16 bits (one sample in
/// one or two bytes), colour filters of 8 bits, or packed colour of 8 bits. A copy, grey or
/// blue-green-red.
/// @param format the code of the pixel format, as the interface standards number it
/// @return empty, with the cause in `why`, where the format is another or bytes are missing
cv::Mat FrameFromBuffer(std::uint32_t format, const void* bytes, std::size_t length, cv::Size size,
                        std::string& why);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_GENICAM_PIXELS_H

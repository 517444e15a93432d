#ifndef JQHOST_OUTPUT_OME_XML_H
#define JQHOST_OUTPUT_OME_XML_H

#include <opencv2/core.hpp>
#include <optional>
#include <string>

namespace jqhost {

/// The OME-XML of one 8-bit picture with 1 channel, or with 3 samples in one channel.
/// @param pixelSize in metres; without it the XML tells no physical size
std::string OmeXml(cv::Size size, int samples, const std::optional<cv::Size2d>& pixelSize);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_OME_XML_H

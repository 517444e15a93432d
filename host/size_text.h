#ifndef JQ_HOST_SIZE_TEXT_H
#define JQ_HOST_SIZE_TEXT_H

#include <opencv2/core/types.hpp>
#include <string>

namespace jqhost {

/// "640 x 480", for messages about sizes that differ.
inline std::string SizeText(cv::Size size) {
  return std::to_string(size.width) + " x " + std::to_string(size.height);
}

}  // namespace jqhost

#endif  // JQ_HOST_SIZE_TEXT_H

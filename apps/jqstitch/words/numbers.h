#ifndef JQSTITCH_WORDS_NUMBERS_H
#define JQSTITCH_WORDS_NUMBERS_H

#include <cstdio>
#include <opencv2/core.hpp>
#include <string>

namespace jqstitch {

inline std::string Fixed(double value, int digits) {
  char text[48];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

/// A share as "12.3 %".
inline std::string Percent(double share) {
  return Fixed(100.0 * share, 1) + " %";
}

inline std::string Pixels(cv::Size size) {
  return std::to_string(size.width) + " x " + std::to_string(size.height);
}

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_NUMBERS_H

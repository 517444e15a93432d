#ifndef JQHOST_RECORD_HTML_TEXT_H
#define JQHOST_RECORD_HTML_TEXT_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace jqhost {

/// Text as it stands in a page or in an attribute of an element.
std::string Escape(const std::string& text);

/// A number with so many digits after the point.
std::string HtmlNumber(double value, int digits);

/// "x,y".
std::string HtmlPair(cv::Point point);

/// JPEG bytes as the source of an image.
std::string JpegSource(const std::vector<unsigned char>& bytes);

}  // namespace jqhost

#endif  // JQHOST_RECORD_HTML_TEXT_H

#ifndef JQSTITCH_INSPECT_CANVAS_TEXT_H
#define JQSTITCH_INSPECT_CANVAS_TEXT_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace jqstitch {

constexpr int kLineHeight = 22;  ///< pixels from one line of text to the next

/// Splits a text into lines that fit `width` pixels, at spaces where possible.
std::vector<std::string> WrapText(const std::string& text, int width, bool bold = false);

/// Writes one line, its left end at `x` and its top at `y`. Characters that the
/// font lacks (it has ASCII only) are shown as '?'.
void WriteText(cv::Mat& picture, int x, int y, const std::string& text, const cv::Scalar& colour,
               bool bold = false);

/// A line of dashes of 8 pixels with gaps of 6.
void DrawDashedLine(cv::Mat& picture, cv::Point from, cv::Point to, const cv::Scalar& colour);

}  // namespace jqstitch

#endif  // JQSTITCH_INSPECT_CANVAS_TEXT_H

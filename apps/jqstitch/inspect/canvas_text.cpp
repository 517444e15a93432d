#include "inspect/canvas_text.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

namespace jqstitch {
namespace {

constexpr int kPlain = cv::FONT_HERSHEY_SIMPLEX;
constexpr int kBold = cv::FONT_HERSHEY_DUPLEX;  // a double stroke
constexpr double kFontScale = 0.5;

// One '?' per character, not per byte, of whatever is not ASCII.
std::string AsciiOnly(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7f) {
      plain += c;
    } else if (byte < 0x80 || byte >= 0xc0) {
      plain += '?';
    }
  }
  return plain;
}

bool Fits(const std::string& text, int width, bool bold) {
  return cv::getTextSize(AsciiOnly(text), bold ? kBold : kPlain, kFontScale, 1, nullptr).width <=
         width;
}

}  // namespace

std::vector<std::string> WrapText(const std::string& text, int width, bool bold) {
  std::vector<std::string> lines;
  std::string rest = text;
  while (!rest.empty()) {
    std::size_t end = rest.size();
    while (end > 1 && !Fits(rest.substr(0, end), width, bold)) {
      const std::size_t space = rest.rfind(' ', end - 1);
      end = space == std::string::npos || space == 0 ? end - 1 : space;
    }
    lines.push_back(rest.substr(0, end));
    rest.erase(0, end);
    rest.erase(0, rest.find_first_not_of(' '));
  }
  return lines;
}

void WriteText(cv::Mat& picture, int x, int y, const std::string& text, const cv::Scalar& colour,
               bool bold) {
  cv::putText(picture, AsciiOnly(text), cv::Point(x, y + 15), bold ? kBold : kPlain, kFontScale,
              colour, 1, cv::LINE_AA);
}

void DrawDashedLine(cv::Mat& picture, cv::Point from, cv::Point to, const cv::Scalar& colour) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double length = std::sqrt(dx * dx + dy * dy);
  const auto at = [&](double distance) {
    const double part = length > 0 ? std::min(distance / length, 1.0) : 0.0;
    return cv::Point(cvRound(from.x + dx * part), cvRound(from.y + dy * part));
  };
  constexpr int kDash = 8, kPeriod = 14;
  for (int start = 0; start < length; start += kPeriod) {
    cv::line(picture, at(start), at(start + kDash), colour, 1, cv::LINE_AA);
  }
}

}  // namespace jqstitch

#include "host/output/scale_bar.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <opencv2/imgproc.hpp>

namespace jqhost {
namespace {

constexpr int kFont = cv::FONT_HERSHEY_SIMPLEX;
constexpr double kFontHeight = 22.0;  // pixels of a capital letter at size 1
constexpr int kShortest = 10;         // pixels of a bar that is worth drawing

// The largest of 1, 2, 5, 10, ... that is not above the length. A length that is such a
// number itself must not slip below it by rounding.
double RoundDown(double length) {
  const double power = std::pow(10.0, std::floor(std::log10(length * (1.0 + 1e-9))));
  const double lead = length / power * (1.0 + 1e-9);
  return (lead >= 5.0 ? 5.0 : lead >= 2.0 ? 2.0 : 1.0) * power;
}

}  // namespace

std::string LengthText(double metres) {
  struct Unit {
    const char* name;
    double metres;
  };
  constexpr Unit kUnits[] = {{"m", 1.0}, {"mm", 1e-3}, {"um", 1e-6}, {"nm", 1e-9}};
  const Unit* unit = kUnits;
  while (unit + 1 != std::end(kUnits) && metres < unit->metres * (1.0 - 1e-9)) ++unit;
  char text[48];
  std::snprintf(text, sizeof text, "%.6g %s", metres / unit->metres, unit->name);
  return text;
}

std::optional<ScaleBar> PlanScaleBar(cv::Size picture, double pixelWidth) {
  ScaleBar bar;
  bar.metres = RoundDown(picture.width / 5.0 * pixelWidth);
  bar.text = LengthText(bar.metres);
  const int length = static_cast<int>(std::lround(bar.metres / pixelWidth));
  if (length < kShortest) return std::nullopt;

  // The bar is drawn thicker in a larger picture, and all else in proportion to it.
  const int thick = std::max(3, std::min(picture.width, picture.height) / 150);
  bar.rim = std::max(1, thick / 3);
  bar.stroke = bar.rim;
  bar.font = 4.0 * thick / kFontHeight;
  int below = 0;
  const cv::Size letters =
      cv::getTextSize(bar.text, kFont, bar.font, bar.stroke + 2 * bar.rim, &below);
  // From top to bottom: rim, letters, what hangs below them, rim, bar, rim.
  const cv::Size size(std::max(length, letters.width) + 2 * bar.rim,
                      letters.height + below + thick + 3 * bar.rim);
  const cv::Point corner =
      cv::Point(picture.width, picture.height) - cv::Point(size) - cv::Point(3 * thick, 3 * thick);
  if (corner.x < 0 || corner.y < 0) return std::nullopt;
  bar.place = cv::Rect(corner, size);
  bar.bar = cv::Rect(corner.x + (size.width - length) / 2, bar.place.br().y - bar.rim - thick,
                     length, thick);
  bar.baseline = corner + cv::Point((size.width - letters.width) / 2, bar.rim + letters.height);
  return bar;
}

void DrawScaleBar(const ScaleBar& bar, cv::Mat& pixels) {
  const cv::Scalar black = cv::Scalar::all(0), white = cv::Scalar::all(255);
  const cv::Rect inside = bar.bar - bar.place.tl();
  const cv::Rect rim(inside.tl() - cv::Point(bar.rim, bar.rim),
                     inside.size() + cv::Size(2 * bar.rim, 2 * bar.rim));
  cv::rectangle(pixels, rim, black, cv::FILLED);
  cv::rectangle(pixels, inside, white, cv::FILLED);
  const cv::Point at = bar.baseline - bar.place.tl();
  cv::putText(pixels, bar.text, at, kFont, bar.font, black, bar.stroke + 2 * bar.rim, cv::LINE_AA);
  cv::putText(pixels, bar.text, at, kFont, bar.font, white, bar.stroke, cv::LINE_AA);
}

}  // namespace jqhost

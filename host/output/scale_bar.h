#ifndef JQHOST_OUTPUT_SCALE_BAR_H
#define JQHOST_OUTPUT_SCALE_BAR_H

#include <opencv2/core.hpp>
#include <optional>
#include <string>

namespace jqhost {

/// A bar of a round length (1, 2 or 5 times a power of ten) of at most a fifth of the
/// picture, with the length written above it, for the lower right corner.
struct ScaleBar {
  double metres = 0.0;
  std::string text;    ///< "200 um"
  cv::Rect place;      ///< all of it, in the picture
  cv::Rect bar;        ///< the bar alone, in the picture
  cv::Point baseline;  ///< where the text begins, in the picture
  double font = 0.0;   ///< size of the letters
  int stroke = 0;      ///< width of their strokes
  int rim = 0;         ///< width of the dark rim round bar and letters
};

/// The bar for a picture of this size; none where there is no room for it.
/// @param pixelWidth in metres
std::optional<ScaleBar> PlanScaleBar(cv::Size picture, double pixelWidth);

/// Draws it, white with a black rim, into `pixels`, which shows `bar.place`.
void DrawScaleBar(const ScaleBar& bar, cv::Mat& pixels);

/// "345 nm", "2 mm": a length in the largest unit of which it is at least 1.
std::string LengthText(double metres);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_SCALE_BAR_H

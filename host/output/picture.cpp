#include "host/output/picture.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "jqimagestitching.h"

namespace jqhost {
bool IsContentBoxExact(const JQImageStitching& stitcher) {
  const cv::Rect bounds = stitcher.GetPlacedBounds();
  return stitcher.GetContentMin() == bounds.tl() && stitcher.GetContentMax() == bounds.br();
}

Picture TakePicture(const JQImageStitching& stitcher, bool trim) {
  Picture picture;
  const cv::Mat mosaic = stitcher.GetMosaic();
  if (mosaic.empty()) return picture;
  const cv::Rect bounds = stitcher.GetPlacedBounds();
  picture.image = trim ? mosaic(bounds) : mosaic;
  picture.origin = trim ? bounds.tl() : cv::Point(0, 0);
  picture.trimmedBy = trim ? "placed frames" : "nothing";
  return picture;
}

Picture TrimPicture(const JQImageStitching& stitcher) {
  Picture picture = TakePicture(stitcher, true);
  if (!picture.image.empty() && IsContentBoxExact(stitcher)) picture.trimmedBy = "content box";
  return picture;
}

cv::Mat WithBackground(const cv::Mat& image, const std::optional<std::array<int, 3>>& colour) {
  if (!colour || *colour == std::array<int, 3>{0, 0, 0}) return image;
  cv::Mat painted = image.clone(), empty;
  cv::inRange(image, cv::Scalar::all(0), cv::Scalar::all(0), empty);
  const auto [red, green, blue] = *colour;
  painted.setTo(cv::Scalar(blue, green, red), empty);
  return painted;
}

cv::Mat AsGrey(const cv::Mat& image, const std::optional<std::array<int, 3>>& background) {
  if (background && ((*background)[0] != (*background)[1] || (*background)[1] != (*background)[2]))
    return image;
  // The three channels of a grey frame go through the stitcher alike.
  cv::Mat grey;
  cv::extractChannel(image, grey, 0);
  return grey;
}

cv::Mat Shrink(const cv::Mat& image, int longest,
               const std::optional<std::array<int, 3>>& background) {
  const double factor = static_cast<double>(longest) / std::max(image.cols, image.rows);
  if (factor >= 1.0) return WithBackground(image, background);
  cv::Mat small;
  const cv::Size size(std::max(1, static_cast<int>(image.cols * factor)),
                      std::max(1, static_cast<int>(image.rows * factor)));
  cv::resize(image, small, size, 0, 0, cv::INTER_AREA);
  if (!background || *background == std::array<int, 3>{0, 0, 0}) return small;
  // Black adds nothing to a mean, so the colour is added by the share of black.
  cv::Mat empty, share;
  cv::inRange(image, cv::Scalar::all(0), cv::Scalar::all(0), empty);
  cv::resize(empty, share, size, 0, 0, cv::INTER_AREA);
  const auto [red, green, blue] = *background;
  const int colour[3] = {blue, green, red};
  for (int r = 0; r < small.rows; ++r) {
    cv::Vec3b* row = small.ptr<cv::Vec3b>(r);
    const unsigned char* black = share.ptr<unsigned char>(r);
    for (int c = 0; c < small.cols; ++c) {
      for (int k = 0; k < 3; ++k) {
        row[c][k] =
            cv::saturate_cast<unsigned char>(row[c][k] + (colour[k] * black[c] + 127) / 255);
      }
    }
  }
  return small;
}

}  // namespace jqhost

#include "host/verdict/appearance.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace jqhost {
namespace {

double Detail(const cv::Mat& grey, double mean) {
  cv::Mat smooth, laplacian;
  // Noise is no detail: it would make a defocused frame look sharp.
  cv::GaussianBlur(grey, smooth, cv::Size(3, 3), 0);
  cv::Laplacian(smooth, laplacian, CV_16S);
  return cv::norm(laplacian, cv::NORM_L1) / static_cast<double>(grey.total()) / mean;
}

}  // namespace

Appearance CompareAppearance(const cv::Mat& picture, const cv::Mat& frame) {
  cv::Mat greyPicture, greyFrame;
  cv::cvtColor(picture, greyPicture, cv::COLOR_BGR2GRAY);
  cv::cvtColor(frame, greyFrame, cv::COLOR_BGR2GRAY);
  const double meanPicture = std::max(cv::mean(greyPicture)[0], 1.0);
  const double meanFrame = std::max(cv::mean(greyFrame)[0], 1.0);
  Appearance result;
  result.brightness = meanFrame / meanPicture;
  result.sharpness =
      Detail(greyFrame, meanFrame) / std::max(Detail(greyPicture, meanPicture), 1e-6);
  return result;
}

}  // namespace jqhost

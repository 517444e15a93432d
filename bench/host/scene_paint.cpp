#include "host/scene_paint.h"

#include <opencv2/imgproc.hpp>

namespace jqbench {

cv::Mat SmoothNoise(cv::Size size, double coarseness, cv::RNG& random) {
  cv::Mat texture(size, CV_32FC1);
  random.fill(texture, cv::RNG::NORMAL, 0.0, 1.0);
  if (coarseness > 0) cv::GaussianBlur(texture, texture, cv::Size(), coarseness, coarseness);
  cv::Scalar mean, deviation;
  cv::meanStdDev(texture, mean, deviation);
  return (texture - mean[0]) / deviation[0];
}

void AddTexture(cv::Mat& picture, const cv::Mat& texture, double strength) {
  cv::Mat colour, sum;
  cv::merge(std::vector<cv::Mat>(3, texture), colour);
  picture.convertTo(sum, CV_32FC3);
  sum += colour * strength;
  sum.convertTo(picture, CV_8UC3);
}

cv::Point RandomPoint(cv::Size size, cv::RNG& random) {
  const int x = random.uniform(0, size.width);
  return {x, random.uniform(0, size.height)};
}

cv::Scalar Grey(int level) {
  return cv::Scalar::all(level);
}

}  // namespace jqbench

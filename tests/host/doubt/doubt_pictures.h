#ifndef JQ_TESTS_HOST_DOUBT_PICTURES_H
#define JQ_TESTS_HOST_DOUBT_PICTURES_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "host/verdict/doubt/placement_view.h"

inline jqhost::PlacementView ViewOf(const cv::Mat& frame) {
  return jqhost::MakePlacementView(jqhost::ReduceFrame(frame));
}

/// A grey scene without repetition: soft random texture.
inline cv::Mat RandomScene(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat noise(size, CV_32FC1), scene;
  random.fill(noise, cv::RNG::NORMAL, 0.0, 120.0);
  cv::GaussianBlur(noise, noise, cv::Size(), 2.0);
  noise += 128.0;
  noise.convertTo(scene, CV_8U);
  return scene;
}

/// Discs in a square raster of `period` pixels.
inline cv::Mat Raster(cv::Size size, int period) {
  cv::Mat scene(size, CV_8UC1, cv::Scalar(60));
  for (int y = 0; y < size.height; y += period)
    for (int x = 0; x < size.width; x += period)
      cv::circle(scene, cv::Point(x, y), period / 3, cv::Scalar(190), cv::FILLED);
  return scene;
}

#endif  // JQ_TESTS_HOST_DOUBT_PICTURES_H

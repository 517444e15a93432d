#ifndef JQ_TESTS_SUPPORT_SCENES_H
#define JQ_TESTS_SUPPORT_SCENES_H

#include <opencv2/imgproc.hpp>
#include <vector>

#include "support/pictures.h"

/// Large pictures from which the frames of a run are cut, made so that frames
/// really get placed.
namespace scenes {

/// Soft grain of this standard deviation in grey levels. Its corners lie as close
/// as the corner search can tell them apart, so that small frames have enough. The
/// grain survives shrinking by `level`.
inline cv::Mat Grain(RandomSource& random, int rows, int cols, double deviation, int level = 1) {
  cv::Mat grain;
  pictures::Noise(random, rows, cols, CV_8UC3).convertTo(grain, CV_32F);
  cv::GaussianBlur(grain, grain, cv::Size(), level);
  cv::Scalar mean, spread;
  cv::meanStdDev(grain, mean, spread);
  const double gain = deviation / spread[0];
  cv::Mat scene;
  grain.convertTo(scene, CV_8U, gain, 120 - mean[0] * gain);
  return scene;
}

/// For the overlap test: neighbouring frames stay within its brightness limit even
/// where they do not match.
inline cv::Mat Dense(RandomSource& random, int rows, int cols, int level = 1) {
  return Grain(random, rows, cols, 12, level);
}

/// For the motion test, which wants frames that differ by less than 5 grey levels.
inline cv::Mat Quiet(RandomSource& random, int rows, int cols, int level = 1) {
  return Grain(random, rows, cols, 5, level);
}

/// A deep copy of one frame.
inline cv::Mat Cut(const cv::Mat& scene, cv::Point corner, cv::Size size) {
  return scene(cv::Rect(corner, size)).clone();
}

/// The eight directions of a stage, as unit steps.
inline std::vector<cv::Point> Directions() {
  return {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};
}

}  // namespace scenes

#endif  // JQ_TESTS_SUPPORT_SCENES_H

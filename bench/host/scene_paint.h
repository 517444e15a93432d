#ifndef JQ_BENCH_HOST_SCENE_PAINT_H
#define JQ_BENCH_HOST_SCENE_PAINT_H

#include <cstdint>
#include <opencv2/core.hpp>

namespace jqbench {

/// Smooth random texture, `CV_32FC1`, mean 0 and deviation 1: normal noise with the
/// detail below `coarseness` pixels removed.
cv::Mat SmoothNoise(cv::Size size, double coarseness, cv::RNG& random);

/// The picture plus a multiple of a texture, the same in all channels.
void AddTexture(cv::Mat& picture, const cv::Mat& texture, double strength);

cv::Point RandomPoint(cv::Size size, cv::RNG& random);
cv::Scalar Grey(int level);

}  // namespace jqbench

#endif  // JQ_BENCH_HOST_SCENE_PAINT_H

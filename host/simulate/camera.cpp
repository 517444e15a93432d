#include "host/simulate/camera.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "host/simulate/random_stream.h"

namespace jqhost {
namespace {

constexpr std::int64_t kOne = 65536;  // gains are in 16-bit fixed point

// Loss of light grows with the square of the distance from the centre and is
// `vignetting` percent in the corners.
void Expose(cv::Mat& image, double vignetting, std::int64_t exposure) {
  const std::int64_t loss = std::llround(vignetting * kOne / 100.0);
  const std::int64_t reach =
      std::max<std::int64_t>(static_cast<std::int64_t>(image.cols) * image.cols +
                                 static_cast<std::int64_t>(image.rows) * image.rows,
                             1);
  for (int r = 0; r < image.rows; ++r) {
    unsigned char* row = image.ptr<unsigned char>(r);
    const std::int64_t y = 2 * r + 1 - image.rows;
    for (int c = 0; c < image.cols; ++c) {
      const std::int64_t x = 2 * c + 1 - image.cols;
      const std::int64_t gain = (kOne - loss * (x * x + y * y) / reach) * exposure / kOne;
      for (int k = 0; k < 3; ++k) {
        unsigned char& sample = row[3 * c + k];
        sample = static_cast<unsigned char>(
            std::clamp<std::int64_t>((sample * gain + kOne / 2) / kOne, 1, 255));
      }
    }
  }
}

// A lens sees the scene around the view, so as much of it as the filter reaches is
// blurred along. (Blurring a view in place would take another, less exact path of
// the image library.)
cv::Mat Defocus(const cv::Mat& scene, const cv::Rect& view, double deviation) {
  const int reach = static_cast<int>(std::ceil(4 * deviation)) + 2;
  const cv::Rect around =
      cv::Rect(view.x - reach, view.y - reach, view.width + 2 * reach, view.height + 2 * reach) &
      cv::Rect(cv::Point(), scene.size());
  cv::Mat blurred;
  cv::GaussianBlur(scene(around).clone(), blurred, cv::Size(), deviation, deviation,
                   cv::BORDER_REFLECT_101);
  return blurred(view - around.tl()).clone();
}

void AddNoise(cv::Mat& image, double deviation, RandomStream stream) {
  constexpr std::int64_t kHalf = std::int64_t{1} << 31;
  const std::int64_t gain = std::llround(deviation / RandomStream::kBellDeviation * 4294967296.0);
  for (int r = 0; r < image.rows; ++r) {
    unsigned char* row = image.ptr<unsigned char>(r);
    for (int i = 0; i < 3 * image.cols; ++i) {
      const std::int64_t change = (stream.Bell() * gain + kHalf) >> 32;
      row[i] = static_cast<unsigned char>(std::clamp<std::int64_t>(row[i] + change, 1, 255));
    }
  }
}

}  // namespace

cv::Mat TakeFrame(const cv::Mat& scene, cv::Point corner, cv::Size frame, int index,
                  const CameraEffects& effects, std::uint64_t seed) {
  const cv::Rect view(corner, frame);
  cv::Mat image = effects.blur > 0 ? Defocus(scene, view, effects.blur) : scene(view).clone();
  const std::uint64_t item = static_cast<std::uint64_t>(index);
  if (effects.vignetting > 0 || effects.exposure > 0) {
    RandomStream stream(seed, kStreamExposure, item);
    const int jitter = static_cast<int>(std::llround(effects.exposure * kOne / 100.0));
    Expose(image, effects.vignetting, kOne + stream.Between(-jitter, jitter));
  }
  if (effects.noise > 0) AddNoise(image, effects.noise, RandomStream(seed, kStreamNoise, item));
  return image;
}

}  // namespace jqhost

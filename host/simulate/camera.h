#ifndef JQHOST_SIMULATE_CAMERA_H
#define JQHOST_SIMULATE_CAMERA_H

#include <cstdint>
#include <opencv2/core.hpp>

namespace jqhost {

/// What the camera does to the light. All off by default.
struct CameraEffects {
  double noise = 0;       ///< standard deviation of the sensor noise, grey levels
  double vignetting = 0;  ///< loss of light in the corners, percent
  double exposure = 0;    ///< largest change of exposure from frame to frame, percent
  double blur = 0;        ///< standard deviation of the defocus, pixels
};

/// Frame `index` of size `frame`, taken at `corner` of the scene: blurred,
/// darkened, exposed, then noisy. Every frame is drawn from a stream of its own,
/// so it depends on nothing but the arguments. Without effects it is an exact
/// copy of the scene. Darkening and noise end at 1 and never at 0, since black
/// means "no content" to the stitcher.
cv::Mat TakeFrame(const cv::Mat& scene, cv::Point corner, cv::Size frame, int index,
                  const CameraEffects& effects, std::uint64_t seed);

}  // namespace jqhost

#endif  // JQHOST_SIMULATE_CAMERA_H

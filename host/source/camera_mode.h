#ifndef JQHOST_SOURCE_CAMERA_MODE_H
#define JQHOST_SOURCE_CAMERA_MODE_H

#include <opencv2/core.hpp>

namespace jqhost {

/// Frames that a camera gives.
struct CameraMode {
  cv::Size size;    ///< pixels; empty: the camera's own choice
  double rate = 0;  ///< frames a second; 0: the camera's own choice
};

}  // namespace jqhost

#endif  // JQHOST_SOURCE_CAMERA_MODE_H

#ifndef JQHOST_SYSTEM_CAMERA_LIST_H
#define JQHOST_SYSTEM_CAMERA_LIST_H

#include <string>
#include <vector>

#include "host/source/camera_mode.h"

namespace jqhost {

/// A camera that the system knows.
struct CameraInfo {
  int number = 0;                 ///< by which `MakeVideoSource` opens it
  std::string name;               ///< as the driver tells it
  std::vector<CameraMode> modes;  ///< largest first, of each size with its highest rate
};

/// The cameras by their number; those that another program uses included. May take some
/// tenths of a second, since devices are opened.
std::vector<CameraInfo> ListCameras();

}  // namespace jqhost

#endif  // JQHOST_SYSTEM_CAMERA_LIST_H

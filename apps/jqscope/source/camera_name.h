#ifndef JQSCOPE_SOURCE_CAMERA_NAME_H
#define JQSCOPE_SOURCE_CAMERA_NAME_H

#include <optional>
#include <string>

#include "host/source/camera_mode.h"

namespace jqscope {

/// A camera as a person, the settings or a journal name it:
///   "0"                   the system's first camera
///   "0@1280x720@30"       with a size and a rate that it is asked for; "@30" may be missing
///   "genicam:NAME"        a GenICam camera, the first one where NAME is missing; "@..." too
///   "rtsp://camera/live"  a stream
struct CameraName {
  bool genicam = false;
  std::string name;  ///< the number, the address, or the GenICam camera's own name
  jqhost::CameraMode mode;
};

/// Nothing where the text names no camera.
std::optional<CameraName> ParseCameraName(const std::string& text);
std::string CameraText(const CameraName& camera);

}  // namespace jqscope

#endif  // JQSCOPE_SOURCE_CAMERA_NAME_H

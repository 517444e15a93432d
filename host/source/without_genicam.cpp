#include "host/input_error.h"
#include "host/source/genicam_source.h"

namespace jqhost {

bool HasGenicam() {
  return false;
}

std::vector<std::string> ListGenicamCameras() {
  return {};
}

std::unique_ptr<FrameSource> OpenGenicamCamera(const std::string&, const CameraMode&,
                                               const StopToken&) {
  throw InputError("this program was built without GenICam cameras (it needs Aravis)");
}

}  // namespace jqhost

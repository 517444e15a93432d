#ifndef JQHOST_SOURCE_GENICAM_SOURCE_H
#define JQHOST_SOURCE_GENICAM_SOURCE_H

#include <memory>
#include <string>
#include <vector>

#include "host/run/stop_token.h"
#include "host/source/frame_source.h"

namespace jqhost {

/// Whether this build knows GenICam cameras (GigE Vision, USB3 Vision).
bool HasGenicam();

/// Their names on the network and on the bus. May take a second. The library's simulated
/// camera ("Fake_1") is not listed and can be opened all the same.
std::vector<std::string> ListGenicamCameras();

/// Opens the camera, the first one where the name is empty. Its frames end when it gives
/// none for some seconds. Raises `InputError`.
/// @param stop ends the waiting for a frame; must outlive the source
std::unique_ptr<FrameSource> OpenGenicamCamera(const std::string& name, const CameraMode& mode,
                                               const StopToken& stop);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_GENICAM_SOURCE_H

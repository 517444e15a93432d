#ifndef JQHOST_OUTPUT_PYRAMID_DEEP_ZOOM_PLACE_H
#define JQHOST_OUTPUT_PYRAMID_DEEP_ZOOM_PLACE_H

#include <string>

namespace jqhost {

/// The folder of the tiles beside NAME.dzi: NAME_files.
std::string DeepZoomTiles(const std::string& path);

/// Refuses a place where the tiles would replace a folder that holds anything else than
/// levels (folders whose names are numbers). Raises `InputError`.
void CheckDeepZoomPlace(const std::string& path);

/// Moves the finished `folder`/picture.dzi and `folder`/picture_files to their place. The
/// tiles change places in one step with those that stand there, and the small file
/// follows; when it cannot, the tiles go back. The old tiles end up in `folder`. Raises
/// `InputError`.
void MoveDeepZoom(const std::string& folder, const std::string& path);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_PYRAMID_DEEP_ZOOM_PLACE_H

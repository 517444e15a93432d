#ifndef JQHOST_SOURCE_FOLLOW_SOURCE_H
#define JQHOST_SOURCE_FOLLOW_SOURCE_H

#include <memory>
#include <string>
#include <vector>

#include "host/run/stop_token.h"
#include "host/source/frame_source.h"

namespace jqhost {

/// A folder that grows while the run goes on. The pictures in it and those that
/// appear are taken once each, in natural order among those that are waiting, as
/// soon as they are written completely: size and time are the same in two looks,
/// and they decode. One that does not decode holds the others up for `seconds`
/// without a change; then it is given as unreadable. The source ends when nothing
/// new has come for `seconds`, or a stop is requested. Raises `InputError` when
/// the folder cannot be read.
/// @param leftOut pictures that the run itself writes
/// @param maxPixels larger pictures are not decoded
/// @param stop must outlive the source
std::unique_ptr<FrameSource> FollowFolder(const std::string& folder, double seconds,
                                          const std::vector<std::string>& leftOut,
                                          const StopToken& stop,
                                          std::int64_t maxPixels = kMostPixels);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_FOLLOW_SOURCE_H

#ifndef JQHOST_SOURCE_LIST_SOURCE_H
#define JQHOST_SOURCE_LIST_SOURCE_H

#include <memory>
#include <string>
#include <vector>

#include "host/run/stop_token.h"
#include "host/source/frame_source.h"

namespace jqhost {

/// Whether a list is read while it is written: standard input ("-"), or a pipe.
bool IsStreamedList(const std::string& list);

/// The pictures and folders that such a list names, one a line, each taken as soon as its
/// line has come; empty lines are skipped. A line that names nothing that can be used is a
/// frame that cannot be read. The source ends with the list, or when a stop is requested
/// while it waits. Raises `InputError` when the list cannot be read, and at the end of one
/// that names nothing.
/// @param first pictures and folders that are taken before
/// @param leftOut pictures that the run itself writes
/// @param maxPixels larger pictures are not decoded
/// @param stop must outlive the source
std::unique_ptr<FrameSource> OpenListSource(const std::string& list,
                                            const std::vector<std::string>& first,
                                            const std::vector<std::string>& leftOut,
                                            const StopToken& stop,
                                            std::int64_t maxPixels = kMostPixels);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_LIST_SOURCE_H

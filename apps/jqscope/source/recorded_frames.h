#ifndef JQSCOPE_SOURCE_RECORDED_FRAMES_H
#define JQSCOPE_SOURCE_RECORDED_FRAMES_H

#include <memory>
#include <string>

#include "host/source/frame_source.h"

namespace jqscope {

/// Whether the folder holds the journal of a run.
bool IsJournal(const std::string& folder);

/// The frames that a recorded run placed and did not take back, in their order and as the
/// stitcher got them. Of a damaged journal those before the damage. The journal is held for
/// reading while the source exists. Raises `InputError`.
std::unique_ptr<jqhost::FrameSource> OpenRecordedFrames(const std::string& folder);

}  // namespace jqscope

#endif  // JQSCOPE_SOURCE_RECORDED_FRAMES_H

#ifndef JQHOST_SOURCE_FILE_CHECK_H
#define JQHOST_SOURCE_FILE_CHECK_H

#include <cstdint>
#include <vector>

#include "host/system/pinned_file.h"
#include "host/verdict/frame_result.h"

namespace jqhost {

/// The files of a batch that speak for themselves without being decoded: missing,
/// a folder, a pipe, no picture, too large, or of a name that the stitcher's strings
/// cannot carry. `results` (one per file, whose names are the files') then says why.
/// @return the files now known to be bad
int FindUnfitFiles(const std::vector<PinnedFile>& files, std::int64_t maxPixels,
                   std::vector<FrameResult>& results);

/// Decodes every file that is not known to be bad and finds those that cannot be
/// read or whose size is not that of most (of equally many, the size that comes
/// first). The stitcher refuses such a list as a whole, without a word why.
int FindOddFiles(const std::vector<PinnedFile>& files, std::int64_t maxPixels,
                 std::vector<FrameResult>& results);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_FILE_CHECK_H

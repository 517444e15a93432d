#ifndef JQHOST_SOURCE_FILE_CHECK_H
#define JQHOST_SOURCE_FILE_CHECK_H

#include <string>
#include <vector>

#include "host/verdict/frame_result.h"

namespace jqhost {

/// The files of a batch that speak for themselves without being decoded: missing,
/// a folder, a pipe, no picture, or of a name that the stitcher's strings cannot
/// carry. Whether any is bad; `results` (one per file) then says why.
bool FindUnfitFiles(const std::vector<std::string>& files, std::vector<FrameResult>& results);

/// Decodes every file and finds those that cannot be read or whose size is not
/// that of most (of equally many, the size that comes first). The stitcher
/// refuses such a list as a whole, without a word why.
bool FindOddFiles(const std::vector<std::string>& files, std::vector<FrameResult>& results);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_FILE_CHECK_H

#ifndef JQHOST_SOURCE_PICTURE_READER_H
#define JQHOST_SOURCE_PICTURE_READER_H

#include <opencv2/core.hpp>
#include <string>

namespace jqhost {

/// Why a file cannot be a picture, found out without decoding it: it is missing,
/// a folder, a pipe (which would block), empty, forbidden or of no known format.
/// Empty when nothing speaks against it.
std::string WhyNotPicture(const std::string& path);

/// Reads a picture; an empty matrix and the cause in `why` when it cannot.
/// @param flags as `cv::imread` takes them
cv::Mat ReadPicture(const std::string& path, int flags, std::string& why);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_PICTURE_READER_H

#ifndef JQHOST_SOURCE_PICTURE_READER_H
#define JQHOST_SOURCE_PICTURE_READER_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <string>

#include "host/system/pinned_file.h"

namespace jqhost {

/// The most pixels of a picture that is read when nothing else is asked for: 1.2 GB
/// of 8-bit colour. A small file can announce far more than fits the memory.
constexpr std::int64_t kMostPixels = 400000000;

/// Why a file cannot be a picture, found out without decoding it: it is missing,
/// a folder, a pipe (which would block), empty, forbidden, of no known format, or
/// its header announces more than `maxPixels`. Empty when nothing speaks against it.
/// @param page of a TIFF, from 1: whose header announces too much
std::string WhyNotPicture(const PinnedFile& file, std::int64_t maxPixels = kMostPixels,
                          int page = 1);
std::string WhyNotPicture(const std::string& path, std::int64_t maxPixels = kMostPixels);

/// Reads a picture; an empty matrix and the cause in `why` when it cannot. Never
/// waits for a pipe, whatever happens to the file meanwhile.
/// @param flags as `cv::imread` takes them
cv::Mat ReadPicture(const PinnedFile& file, int flags, std::string& why,
                    std::int64_t maxPixels = kMostPixels);
cv::Mat ReadPicture(const std::string& path, int flags, std::string& why,
                    std::int64_t maxPixels = kMostPixels);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_PICTURE_READER_H

#ifndef JQSTITCH_FILES_PICTURE_FILE_H
#define JQSTITCH_FILES_PICTURE_FILE_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace jqstitch {

// Every failure here raises `std::runtime_error` that names the path and the cause.

/// Writes the bytes to a temporary file in the same folder, flushes it to the
/// disk and renames it, so that `path` holds either the old content or all of
/// the new. Something that is not a plain file (a pipe, a device) is written to
/// directly.
void WriteFileWhole(const std::string& path, const void* bytes, std::size_t size);

/// Refuses a path whose extension stands for no format that can be written.
void CheckPictureExtension(const std::string& path);

/// Encodes by the extension of `path` and writes the file whole.
/// @param parameters as `cv::imwrite` takes them
void WritePicture(const std::string& path, const cv::Mat& picture,
                  const std::vector<int>& parameters = {});

}  // namespace jqstitch

#endif  // JQSTITCH_FILES_PICTURE_FILE_H

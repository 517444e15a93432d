#ifndef JQHOST_OUTPUT_PICTURE_FORMAT_H
#define JQHOST_OUTPUT_PICTURE_FORMAT_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "host/input_error.h"

namespace jqhost {

/// A picture that the format of its path does not hold.
class FormatError : public InputError {
 public:
  using InputError::InputError;
};

/// ".png" of "a/b.PNG".
std::string PictureExtension(const std::string& path);

/// Refuses, with advice, an extension that no encoder knows or whose format does
/// not keep an 8-bit colour picture. Raises `InputError`.
void CheckPictureFormat(const std::string& path);

/// Longest side that the format of this extension holds.
int LongestSide(const std::string& path);

/// Why a picture of this size does not fit the format of the path, in one
/// sentence; empty when it fits.
std::string WhyTooLarge(const std::string& path, cv::Size size);

/// The picture's bytes in the format of the path's extension. Raises `FormatError`.
std::vector<unsigned char> EncodePicture(const std::string& path, const cv::Mat& picture);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_PICTURE_FORMAT_H

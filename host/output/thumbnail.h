#ifndef JQHOST_OUTPUT_THUMBNAIL_H
#define JQHOST_OUTPUT_THUMBNAIL_H

#include <opencv2/core.hpp>
#include <vector>

namespace jqhost {

/// A frame shrunk to at most 128 pixels a side, as JPEG; empty when the frame has
/// samples of an unknown kind.
std::vector<unsigned char> Thumbnail(const cv::Mat& frame);

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_THUMBNAIL_H

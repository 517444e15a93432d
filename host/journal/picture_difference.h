#ifndef JQHOST_JOURNAL_PICTURE_DIFFERENCE_H
#define JQHOST_JOURNAL_PICTURE_DIFFERENCE_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <string>

namespace jqhost {

/// A picture as its file holds it. Raises `InputError`.
cv::Mat ReadWhole(const std::string& path, std::int64_t maxPixels);

/// How many pixels differ, and where, in words that follow "it is not the same: "; empty
/// where all are equal.
std::string PixelDifference(const cv::Mat& saved, const cv::Mat& painted);

/// The same for two Deep Zoom pictures, given by their .dzi files: compares every tile of
/// every level, and tells the first that is missing, unreadable or different. Raises
/// `InputError` where the saved one is not there.
std::string TileDifference(const std::string& saved, const std::string& painted);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_PICTURE_DIFFERENCE_H

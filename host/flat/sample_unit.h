#ifndef JQHOST_FLAT_SAMPLE_UNIT_H
#define JQHOST_FLAT_SAMPLE_UNIT_H

#include <opencv2/core.hpp>

namespace jqhost {

/// A dark frame or flat field as `CV_32F` in the unit of frames of this depth, with
/// as many channels (1 or 3): grey is repeated, colour becomes its mean.
/// @param depth `CV_8U` or `CV_16U`, the latter with `bits` significant bits
cv::Mat InUnitOfFrames(const cv::Mat& file, int depth, int bits, int channels);

}  // namespace jqhost

#endif  // JQHOST_FLAT_SAMPLE_UNIT_H

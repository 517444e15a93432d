#ifndef JQHOST_SOURCE_IMAGE_RECORD_H
#define JQHOST_SOURCE_IMAGE_RECORD_H

#include <opencv2/core.hpp>
#include <string>

#include "jqglobalclass.h"

namespace jqhost {

/// Why a matrix cannot be handed over as a record, in one sentence; empty when
/// it can. Sides are 16 bits wide there, samples 8 or 16 bits, channels 1, 3 or 4.
std::string WhyNoRecord(const cv::Mat& picture);

/// A record that points at the matrix's pixels, which must outlive its use.
_tagJQIMG MakeRecord(const cv::Mat& picture);

/// The pixels of a record as the stitcher takes them in: 8-bit, three channels,
/// zero samples lifted.
cv::Mat AsTakenIn(const cv::Mat& picture);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_IMAGE_RECORD_H

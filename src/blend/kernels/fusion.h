#ifndef JQ_BLEND_KERNELS_FUSION_H
#define JQ_BLEND_KERNELS_FUSION_H

#include <opencv2/core.hpp>

#include "blend/kernels/fusion_scratch.h"

namespace jqstitching {

/// Raises `cv::Exception` unless the images have one size and one type, 8-bit with 1
/// or 3 channels.
void CheckFusionPair(const cv::Mat& oldBlock, const cv::Mat& newFrame);

/// The weight of the old content, `CV_8UC1`, in a matrix of its own. The new frame's
/// border counts as empty, the old block's does not.
cv::Mat OldContentWeight(const cv::Mat& oldBlock, const cv::Mat& newFrame, FusionScratch& scratch);

/// Writes the fused pixels into `newFrame` and, when `writeBack` is true, into
/// `oldBlock` as well. The old content and the frame count as they were on entry,
/// even where the two share memory. Either throws before the first pixel is
/// written or not at all.
void FuseImages(cv::Mat& oldBlock, cv::Mat& newFrame, bool writeBack, FusionScratch& scratch);

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_FUSION_H

#ifndef JQ_BLEND_KERNELS_FUSION_H
#define JQ_BLEND_KERNELS_FUSION_H

#include <opencv2/core.hpp>

#include "blend/kernels/fusion_scratch.h"
#include "blend/kernels/fusion_weights.h"

namespace jqstitching {

/// Raises `cv::Exception` unless the images have one size and one type, 8-bit with 1
/// or 3 channels.
void CheckFusionPair(const cv::Mat& oldBlock, const cv::Mat& newFrame);
void CheckFusionPair(cv::Size oldSize, int oldType, cv::Size newSize, int newType);

/// The weight of the old content, `CV_8UC1`, in a matrix of its own. The new frame's
/// border counts as empty, the old block's does not.
cv::Mat OldContentWeight(const cv::Mat& oldBlock, const cv::Mat& newFrame, FusionScratch& scratch);

/// Writes the fused pixels into `newFrame` and, when `writeBack` is true, into
/// `oldBlock` as well. The old content and the frame count as they were on entry,
/// even where the two share memory. Either throws before the first pixel is
/// written or not at all.
void FuseImages(cv::Mat& oldBlock, cv::Mat& newFrame, bool writeBack, FusionScratch& scratch);

/// The same with the weights of this frame at hand. For a pair that `CheckFusionPair` lets
/// pass, neither of them empty, it throws only where the two share memory or where
/// `FusionWeights::ReadingMayFail` is true.
void FuseImages(cv::Mat& oldBlock, cv::Mat& newFrame, bool writeBack, FusionWeights& rows);

/// Whether some byte may belong to both, by where their matrices lie.
bool SharesMemory(const cv::Mat& a, const cv::Mat& b);

}  // namespace jqstitching

#endif  // JQ_BLEND_KERNELS_FUSION_H

#ifndef JQ_OVERLAP_KERNELS_MOTION_H
#define JQ_OVERLAP_KERNELS_MOTION_H

#include <opencv2/core.hpp>

#include "overlap/kernels/overlap_quality.h"

namespace jqstitching {

/// Raises `cv::Exception` unless both frames have one size that is not empty.
void CheckMotionFrames(const cv::Mat& first, const cv::Mat& second);

/// Mean absolute difference of two blurred grey pictures (`CV_8UC1`, one size),
/// 0 to 255, truncated.
int MotionDifference(const cv::Mat& first, const cv::Mat& second, QualityScratch& scratch);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_KERNELS_MOTION_H

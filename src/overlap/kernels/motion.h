#ifndef JQ_OVERLAP_KERNELS_MOTION_H
#define JQ_OVERLAP_KERNELS_MOTION_H

#include <opencv2/core.hpp>

#include "overlap/kernels/overlap_quality.h"

namespace jqstitching {

/// Raises `cv::Exception` where `second` is empty or `first` has fewer rows or columns.
void CheckMotionFrames(const cv::Mat& first, const cv::Mat& second);

/// Mean absolute difference of two blurred grey pictures (`CV_8UC1`), 0 to 255,
/// truncated. `first` may be larger: each is blurred as a whole, and the rows and
/// columns of `second` are compared.
int MotionDifference(const cv::Mat& first, const cv::Mat& second, QualityScratch& scratch);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_KERNELS_MOTION_H

#ifndef JQ_REGISTRATION_KERNELS_ZERO_SAMPLES_H
#define JQ_REGISTRATION_KERNELS_ZERO_SAMPLES_H

#include <opencv2/core.hpp>

#include "picture/grey.h"

namespace jqstitching {

/// Replaces zero bytes in place, because zero marks empty mosaic: by 1 in the
/// first cols bytes of each row of a one-channel image, by 2 in the first
/// 3 * cols bytes of each row of any other. Bytes past a row's end (two-channel
/// images) are not touched.
void LiftZeroSamples(cv::Mat& image);

/// `LiftZeroSamples` and `ToGreyAndHalf` of a three-channel 8-bit picture while its
/// rows are in cache.
GreyAndHalf LiftToGreyAndHalf(cv::Mat& picture, ScratchPicture& greyMemory,
                              ScratchPicture& halfMemory);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_KERNELS_ZERO_SAMPLES_H

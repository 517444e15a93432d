#ifndef JQ_REGISTRATION_KERNELS_DESCRIPTOR_H
#define JQ_REGISTRATION_KERNELS_DESCRIPTOR_H

#include <opencv2/core.hpp>
#include <vector>

namespace jqstitching {

/// One row of 200 16-bit bins per corner: 25 blocks (horizontal position
/// outermost) of 8 orientations, each block 4 x 4 pixels of the 20 x 20 patch
/// from corner - 10 to corner + 9. `grey` is an 8-bit image, read as if its
/// samples were one channel wide.
cv::Mat DescribeCorners(const cv::Mat& grey, const std::vector<cv::Point>& corners);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_KERNELS_DESCRIPTOR_H

#ifndef JQ_OVERLAP_WORKING_SCALE_H
#define JQ_OVERLAP_WORKING_SCALE_H

#include <cstdint>
#include <opencv2/core.hpp>

namespace jqstitching {

/// Shrinks the three frames of a call by the detection level, each into pixels of its
/// own. The new frame's size is the target for all three.
void ShrinkFrames(std::int32_t detectLevel, cv::Mat& reference, cv::Mat& previous,
                  cv::Mat& current);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_WORKING_SCALE_H

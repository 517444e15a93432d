#ifndef JQ_OVERLAP_PART_QUALITY_H
#define JQ_OVERLAP_PART_QUALITY_H

#include "overlap/kernels/overlap_flag.h"

namespace jqstitching {

/// The overlap test of two parts as they were cut, of any size and kind that the
/// image library halves.
OverlapFit TestParts(int offsetX, int offsetY, const OverlapLimits& limits, const cv::Mat& first,
                     const cv::Mat& second, QualityScratch& scratch);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_PART_QUALITY_H

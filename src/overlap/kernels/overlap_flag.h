#ifndef JQ_OVERLAP_KERNELS_OVERLAP_FLAG_H
#define JQ_OVERLAP_KERNELS_OVERLAP_FLAG_H

#include <limits>
#include <opencv2/core.hpp>

#include "overlap/kernels/overlap_quality.h"

namespace jqstitching {

/// What the overlap test compares.
struct OverlapLimits {
  int rows, cols;            ///< of the new frame
  float bright, definition;  ///< the armed thresholds
};

/// The overlap test's result, and its measures; NaN where one was not taken.
struct OverlapFit {
  bool fit = false;
  float bright = std::numeric_limits<float>::quiet_NaN();
  float definition = std::numeric_limits<float>::quiet_NaN();
};

/// Whether the offset lies below the frame's size (signed and one-sided: a
/// negative offset of any size passes) and both measures of the halved grey
/// pictures lie below their thresholds. NaN fails. A measure that cannot change
/// the verdict any more is not taken.
OverlapFit TestOverlap(int offsetX, int offsetY, const OverlapLimits& limits,
                       const cv::Mat& firstHalf, const cv::Mat& secondHalf,
                       QualityScratch& scratch);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_KERNELS_OVERLAP_FLAG_H

#ifndef JQ_STITCHER_ACCEPTANCE_H
#define JQ_STITCHER_ACCEPTANCE_H

#include <opencv2/core.hpp>

#include "jqframeverdict.h"
#include "jqstitchingalgorithm.h"
#include "overlap/frame_measures.h"

namespace jqstitching {

/// Whether so many matches make a measurement.
bool EnoughMatches(std::int32_t matchCount);

/// How much of a frame may overlap its neighbour, along the larger component of the
/// shift: less than `most` and more than `least`.
struct OverlapBounds {
  float least = JQFrameVerdict::kLeastOverlap;
  float most = JQFrameVerdict::kMostOverlap;
};

/// Judges a frame by the stitch record: the overlap flag, the matches and the shift.
/// `frame` is its size in camera pixels. A bound that is NaN fails. The frame is to be
/// placed exactly where the cause is `kPlaced`; `registered` and the numbers in the
/// verdict are those of this frame even where the record keeps older ones.
JQFrameVerdict JudgeFrame(const stitchflags& record, const FrameMeasures& measures, cv::Size frame,
                          const OverlapBounds& bounds);

}  // namespace jqstitching

#endif  // JQ_STITCHER_ACCEPTANCE_H

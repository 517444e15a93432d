#ifndef JQSTITCH_INSPECT_PAIR_VERDICT_H
#define JQSTITCH_INSPECT_PAIR_VERDICT_H

#include "inspect/pair_analysis.h"

namespace jqstitch {

/// Asks a stitcher of its own what a live run does with the frames and writes
/// `overlapFit`, `accepted` and `verdict`, and adds to `overlapWords` how the test
/// ended. The corners and the offset of `pair` are known by now.
/// @param first, second frames in full size
void DecideVerdict(const cv::Mat& first, const cv::Mat& second,
                   const jqhost::StitchSettings& settings, PairAnalysis& pair);

}  // namespace jqstitch

#endif  // JQSTITCH_INSPECT_PAIR_VERDICT_H

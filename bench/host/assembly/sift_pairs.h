#ifndef JQ_BENCH_HOST_ASSEMBLY_SIFT_PAIRS_H
#define JQ_BENCH_HOST_ASSEMBLY_SIFT_PAIRS_H

#include <opencv2/core.hpp>
#include <vector>

namespace jqbench {

/// Two frames with something in common.
struct SiftPair {
  int first = 0, second = 0;
  cv::Point2d shift;  ///< of the second frame's corner in the first frame
  int matches = 0;    ///< that agree with it
  int matched = 0;    ///< in all
};

/// All pairs of frames that the usual way finds: at most 1000 SIFT features a frame, the
/// nearest descriptor if it is clearly nearer than the second (ratio 0.75), and the shift on
/// which most matches agree within 3 pixels; every match is tried as a hypothesis, so that
/// chance plays no part. A pair needs 11 matches, as in a live run.
std::vector<SiftPair> FindSiftPairs(const std::vector<cv::Mat>& frames);

}  // namespace jqbench

#endif  // JQ_BENCH_HOST_ASSEMBLY_SIFT_PAIRS_H

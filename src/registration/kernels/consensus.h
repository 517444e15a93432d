#ifndef JQ_REGISTRATION_KERNELS_CONSENSUS_H
#define JQ_REGISTRATION_KERNELS_CONSENSUS_H

#include <opencv2/core.hpp>
#include <vector>

namespace jqstitching {

/// The match whose translation (first - second) most matches agree with.
struct Consensus {
  int hypothesis = -1;       ///< index of the winning match, -1 without any match
  std::vector<int> support;  ///< agreeing matches, ascending
};

/// Tries every match as the hypothesis; a match agrees when it lies less than 4
/// pixels (Euclidean) from the translation. Ties go to the earlier match.
/// `std::out_of_range` when `second` is shorter than `first`.
Consensus FindConsensus(const std::vector<cv::Point>& first, const std::vector<cv::Point>& second);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_KERNELS_CONSENSUS_H

#ifndef JQ_REGISTRATION_MATCHING_H
#define JQ_REGISTRATION_MATCHING_H

#include <opencv2/core.hpp>
#include <vector>

namespace jqstitching {

/// Pairs (x = row of `second`, y = row of `first`) of every row of `second` with
/// its nearest row of `first` whose squared distance is below 0.98 of the
/// runner-up's, in row order. Distances are single-precision sums over the
/// columns, first to last; of equally near rows the first one counts.
std::vector<cv::Point> MatchDescriptors(const cv::Mat& first, const cv::Mat& second);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_MATCHING_H

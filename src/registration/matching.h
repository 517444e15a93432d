#ifndef JQ_REGISTRATION_MATCHING_H
#define JQ_REGISTRATION_MATCHING_H

#include <opencv2/core.hpp>
#include <vector>

#include "registration/distances.h"

namespace jqstitching {

/// Pairs (x = row of `second`, y = index in `first`) of every row of `second`
/// with its nearest descriptor of `first` whose squared distance is below 0.98 of
/// the runner-up's, in row order. `second` is `CV_32F` with no more columns than
/// `first`; all values are finite.
std::vector<cv::Point> MatchDescriptors(const TransposedDescriptors& first, const cv::Mat& second);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_MATCHING_H

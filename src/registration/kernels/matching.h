#ifndef JQ_REGISTRATION_KERNELS_MATCHING_H
#define JQ_REGISTRATION_KERNELS_MATCHING_H

#include <opencv2/core.hpp>
#include <vector>

#include "registration/kernels/distances.h"

namespace jqstitching {

/// Pairs (x = row of `second`, y = row of `first`) of every row of `second` with
/// its nearest row of `first` whose squared distance is below 0.98 of the
/// runner-up's, in row order; of equally near rows the first one counts.
///
/// A distance is the sum, first column to last, of squared single-precision
/// differences, in single precision. Such a sum is exact while it is below 2^24 and
/// no smaller than 2^24 from there on, and its rounding errors stay below a known
/// share of it. So whole-number distances settle every row that is not within
/// that share of a tie, and the stated sums the others.
std::vector<cv::Point> MatchDescriptors(const PairedDescriptors& first,
                                        const PairedDescriptors& second);

/// The same by the stated sums alone, for `CV_32F` matrices of finite values, at
/// least one row each and no fewer columns in `first`.
std::vector<cv::Point> MatchInStatedOrder(const cv::Mat& first, const cv::Mat& second);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_KERNELS_MATCHING_H

#ifndef JQ_BENCH_HOST_ASSEMBLY_SIFT_PLACES_H
#define JQ_BENCH_HOST_ASSEMBLY_SIFT_PLACES_H

#include <opencv2/core.hpp>
#include <optional>
#include <vector>

namespace jqbench {

/// Where SIFT pairs put the frames of the largest island, under the graph of the assembly:
/// the same loops, the same throwing out, the same least squares. The confidence of a pair is
/// the share of its matches that agree.
std::vector<std::optional<cv::Point2d>> PlaceBySift(const std::vector<cv::Mat>& frames);

}  // namespace jqbench

#endif  // JQ_BENCH_HOST_ASSEMBLY_SIFT_PLACES_H

#ifndef JQ_BENCH_REPORT_OTHER_WAYS_H
#define JQ_BENCH_REPORT_OTHER_WAYS_H

#include <opencv2/core.hpp>
#include <optional>

namespace jqbench {

// The image library's own ways to find the shift that carries a point of `second`
// onto `first`, colour frames in, nothing when they give up.

/// Phase correlation of the whole grey frames under a Hanning window.
std::optional<cv::Point2d> ByPhaseCorrelation(const cv::Mat& first, const cv::Mat& second);
/// 500 ORB features a frame, mutual nearest neighbours, RANSAC over rotation,
/// scale and shift; the shift of the frame's middle.
std::optional<cv::Point2d> ByOrb(const cv::Mat& first, const cv::Mat& second);
/// The scan stitcher with its own defaults: registers, warps and blends the two.
std::optional<cv::Point2d> ByScanStitcher(const cv::Mat& first, const cv::Mat& second);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_OTHER_WAYS_H

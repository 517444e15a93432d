#ifndef JQ_BENCH_HOST_ASSEMBLY_SCAN_STITCHER_H
#define JQ_BENCH_HOST_ASSEMBLY_SCAN_STITCHER_H

#include <opencv2/core.hpp>
#include <optional>
#include <vector>

namespace jqbench {

/// Where the image library's scan stitcher, with its own defaults, puts the frames, seen
/// from the first one that it keeps; nothing for those that it leaves out. It may turn and
/// stretch frames, so the place is that of a frame's middle. The fused picture is made as
/// well, and dropped.
std::vector<std::optional<cv::Point2d>> PlaceByScanStitcher(const std::vector<cv::Mat>& frames);

}  // namespace jqbench

#endif  // JQ_BENCH_HOST_ASSEMBLY_SCAN_STITCHER_H

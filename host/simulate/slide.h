#ifndef JQHOST_SIMULATE_SLIDE_H
#define JQHOST_SIMULATE_SLIDE_H

#include <cstdint>
#include <opencv2/core.hpp>

namespace jqhost {

/// Paints a stained tissue section: a mottled ground, fibres and cells with
/// nuclei, `CV_8UC3` in blue-green-red order. A seed stands for one endless
/// slide; a larger `size` shows more of the same slide. No sample is below 16,
/// since black means "no content" to the stitcher.
cv::Mat PaintSlide(cv::Size size, std::uint64_t seed);

}  // namespace jqhost

#endif  // JQHOST_SIMULATE_SLIDE_H

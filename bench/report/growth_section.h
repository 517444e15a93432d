#ifndef JQ_BENCH_REPORT_GROWTH_SECTION_H
#define JQ_BENCH_REPORT_GROWTH_SECTION_H

#include <opencv2/core.hpp>
#include <string>

namespace jqbench {

/// Growth of a mosaic of `frames` frames by one frame on each side in turn: in place, and
/// by the image library's copy into new memory. The time is the median of `repeats`; peak
/// memory is the most that was resident in one of them beyond what had been without the
/// mosaic, in sizes of the new mosaic. Sets `equal` to false when pixels differ.
std::string GrowthHeader();
std::string GrowthRows(cv::Size frame, cv::Size frames, int repeats, bool& equal);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_GROWTH_SECTION_H

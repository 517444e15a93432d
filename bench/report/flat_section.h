#ifndef JQ_BENCH_REPORT_FLAT_SECTION_H
#define JQ_BENCH_REPORT_FLAT_SECTION_H

#include <opencv2/core.hpp>
#include <string>

namespace jqbench {

/// Two live runs of the library see the same frames by turns, one with the mosaic
/// that every run starts with, one with a mosaic of `largeBytes` or more. Time a
/// frame must be the same in both; growth may cost one pass over the mosaic.
std::string FlatTable(cv::Size frame, std::size_t largeBytes, int frames);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_FLAT_SECTION_H

#ifndef JQ_BENCH_REPORT_PAIR_SECTION_H
#define JQ_BENCH_REPORT_PAIR_SECTION_H

#include <opencv2/core.hpp>
#include <string>

namespace jqbench {

std::string PairHeader();

/// Registers pairs of frames with known shifts in every way that the image
/// library offers beside ours; one table row for each way. `equal` becomes false
/// when library and plain twin differ.
std::string PairRows(cv::Size frame, bool& equal);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_PAIR_SECTION_H

#ifndef JQ_BENCH_REPORT_STAGE_SECTION_H
#define JQ_BENCH_REPORT_STAGE_SECTION_H

#include <opencv2/core.hpp>
#include <string>

namespace jqbench {

/// Each stage of a frame for itself, beside what it cannot do without: the bytes
/// that it has to read and write once, at the speed of a plain copy here, and the
/// arithmetic operations that its result is defined by.
std::string StageTable(cv::Size frame);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_STAGE_SECTION_H

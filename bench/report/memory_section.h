#ifndef JQ_BENCH_REPORT_MEMORY_SECTION_H
#define JQ_BENCH_REPORT_MEMORY_SECTION_H

#include <opencv2/core.hpp>
#include <string>

namespace jqbench {

std::string MemoryHeader();

/// One table row for the library's engine and one for the plain twin's: the
/// scratch of frames that are not placed and of one that is, what stays of it
/// between frames, page faults a frame; and the peak of a live run.
std::string MemoryRows(cv::Size frame, int overlapMode);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_MEMORY_SECTION_H

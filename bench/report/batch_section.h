#ifndef JQ_BENCH_REPORT_BATCH_SECTION_H
#define JQ_BENCH_REPORT_BATCH_SECTION_H

#include <opencv2/core.hpp>
#include <vector>

#include "report/frame_kind.h"

namespace jqbench {

struct BatchResult {
  TimesByKind times;               ///< from a file's last decoded byte to the next read
  Equality equality;               ///< after every file, and of the finished picture
  std::vector<double> decodingMs;  ///< `cv::imread` of a file
  int files = 0;
  int libraryReads = 0;  ///< files that the library decoded, apart from the size check
};

/// Library and plain twin stitch the same files, in turns of one file each.
BatchResult RunBatch(cv::Size frame, int files);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_BATCH_SECTION_H

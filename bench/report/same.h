#ifndef JQ_BENCH_REPORT_SAME_H
#define JQ_BENCH_REPORT_SAME_H

#include <opencv2/core.hpp>

#include "jqstitchingalgorithm.h"

namespace jqbench {

/// Size, type and every byte.
bool SamePixels(const cv::Mat& a, const cv::Mat& b);
bool SameFlags(const stitchflags& a, const stitchflags& b);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_SAME_H

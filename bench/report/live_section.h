#ifndef JQ_BENCH_REPORT_LIVE_SECTION_H
#define JQ_BENCH_REPORT_LIVE_SECTION_H

#include <opencv2/core.hpp>

#include "report/frame_kind.h"

namespace jqbench {

struct LiveCase {
  cv::Size frame;
  int overlapMode;
  int frames;
};

struct LiveResult {
  TimesByKind times;
  Equality equality;
  std::vector<double> faults;   ///< page faults of the library's steady frames
  double convertLibraryMs = 0;  ///< share of a frame spent on the host's record
  double convertPlainMs = 0;
};

/// Hands every frame to the library and to the plain twin, one after the other
/// and in changing order, and compares everything that a host can see.
LiveResult RunLive(const LiveCase& what);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_LIVE_SECTION_H

#ifndef JQSCOPE_WORK_TIMED_FRAME_H
#define JQSCOPE_WORK_TIMED_FRAME_H

#include <chrono>

#include "host/source/frame_source.h"

namespace jqscope {

using Clock = std::chrono::steady_clock;

/// A frame on its way from the source to the stitcher.
struct TimedFrame {
  jqhost::SourceFrame frame;
  Clock::time_point taken;  ///< when the source gave it
  bool isEnd = false;       ///< no frame: the source has come to its end
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_TIMED_FRAME_H

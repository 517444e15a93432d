#ifndef JQSCOPE_WORDS_GUIDANCE_H
#define JQSCOPE_WORDS_GUIDANCE_H

#include <QString>

#include "work/run_report.h"

namespace jqscope {

/// The one sentence that says what to do now.
QString GuidanceFor(const RunReport& report);

/// What the coach bar shows, as shares of the frame.
struct Coaching {
  bool hasShift = false;
  double shift = 0.0;      ///< since the frame placed last
  double least = 0.1;      ///< a frame is placed above this shift
  double most = 0.9;       ///< and below this one
  double speed = 0.0;      ///< from one frame to the next
  double bestFrom = 0.01;  ///< the best range of the speed
  double bestTo = 0.05;
};
Coaching CoachingFor(const RunReport& report);

/// Why frames are left out, as the counters name it.
QString CauseWord(jqhost::Cause cause);

}  // namespace jqscope

#endif  // JQSCOPE_WORDS_GUIDANCE_H

#ifndef JQHOST_RUN_RUN_OBSERVER_H
#define JQHOST_RUN_RUN_OBSERVER_H

#include "host/verdict/frame_result.h"

namespace jqhost {

/// Follows a run while it goes on, on the thread of the run.
class RunObserver {
 public:
  virtual ~RunObserver() = default;
  /// The run begins; again when it is tried once more with fewer frames.
  /// @param total frames; 0 when nobody knows
  virtual void OnBegin(int total) = 0;
  /// A frame has been judged. @param done frames so far
  virtual void OnFrame(const FrameResult& result, int done) = 0;
};

}  // namespace jqhost

#endif  // JQHOST_RUN_RUN_OBSERVER_H

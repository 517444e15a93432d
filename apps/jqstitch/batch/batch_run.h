#ifndef JQSTITCH_BATCH_BATCH_RUN_H
#define JQSTITCH_BATCH_BATCH_RUN_H

#include <string>
#include <vector>

#include "batch/batch_options.h"
#include "console/interrupt.h"
#include "host/run/batch_session.h"
#include "run/recorder.h"

namespace jqstitch {

/// A batch run: collects the files, has them stitched, and delivers the result.
class BatchRun {
 public:
  BatchRun(const BatchOptions& options, Console& console);

  /// @return the exit code. Raises `InputError` for what is wrong from the start.
  int Run();

 private:
  std::vector<std::string> CollectFiles(const std::vector<std::string>& outputs);
  int StopBefore(jqhost::BatchSession& session, const InterruptGuard& guard);
  int Refuse(jqhost::BatchSession& session);
  int Deliver(jqhost::BatchSession& session, const InterruptGuard& guard);

  const BatchOptions& m_options;
  Console& m_console;
  Recorder m_recorder;
  jqhost::FramePreparation m_preparation;
};

}  // namespace jqstitch

#endif  // JQSTITCH_BATCH_BATCH_RUN_H

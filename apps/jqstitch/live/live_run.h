#ifndef JQSTITCH_LIVE_LIVE_RUN_H
#define JQSTITCH_LIVE_LIVE_RUN_H

#include "console/interrupt.h"
#include "host/run/push_session.h"
#include "host/run/run_observer.h"
#include "host/verdict/standing.h"
#include "live/live_options.h"
#include "live/running_files.h"
#include "run/recorder.h"

namespace jqstitch {

/// A live run: hands the stitcher one frame after another, as a camera would.
class LiveRun : private jqhost::RunObserver {
 public:
  LiveRun(const LiveOptions& options, Console& console);

  /// @return the exit code. Raises `InputError` for what is wrong from the start.
  int Run();

 private:
  std::unique_ptr<jqhost::FrameSource> OpenSource(const std::vector<std::string>& outputs,
                                                  const jqhost::StopToken& stop) const;
  void OnBegin(int total) override;
  void OnFrame(const jqhost::FrameResult& result, int done) override;

  const LiveOptions& m_options;
  Console& m_console;
  Recorder m_recorder;
  jqhost::FramePreparation m_preparation;
  jqhost::PushSession m_session;
  RunningFiles m_files;
  jqhost::Track m_track;
};

}  // namespace jqstitch

#endif  // JQSTITCH_LIVE_LIVE_RUN_H

#ifndef JQSTITCH_LIVE_LIVE_RUN_H
#define JQSTITCH_LIVE_LIVE_RUN_H

#include "console/interrupt.h"
#include "host/journal/recorded_run.h"
#include "host/run/push_session.h"
#include "host/run/run_observer.h"
#include "host/verdict/standing.h"
#include "journal/run_journal.h"
#include "live/live_options.h"
#include "live/running_files.h"
#include "run/recorder.h"

namespace jqstitch {

/// A live run: hands the stitcher one frame after another, as a camera would.
class LiveRun : private jqhost::RunObserver {
 public:
  LiveRun(const LiveOptions& options, Console& console);
  /// Goes on where a recorded run ended, with its settings. Without a source it only makes
  /// the picture.
  LiveRun(const LiveOptions& options, Console& console, jqhost::RecordedRun& recorded);

  /// @return the exit code. Raises `InputError` for what is wrong from the start.
  int Run();

 private:
  std::unique_ptr<jqhost::FrameSource> OpenFiles(const std::vector<std::string>& outputs,
                                                 const jqhost::StopToken& stop) const;
  std::unique_ptr<jqhost::FrameSource> OpenSource(const std::vector<std::string>& outputs,
                                                  const jqhost::StopToken& stop);
  bool HasSource() const { return !m_options.source.empty() || !m_options.list.empty(); }
  bool Rebuild(const jqhost::StopToken& stop);
  void StartJournal();
  void TakeFrames(jqhost::FrameSource& source, const InterruptGuard& guard);
  jqhost::PictureEntry SavedEntry();
  int Deliver(const jqhost::StopToken& stop);
  void OnBegin(int total) override;
  void OnFrame(const jqhost::FrameResult& result, int done) override;

  const LiveOptions& m_options;
  Console& m_console;
  Recorder m_recorder;
  jqhost::FramePreparation m_preparation;
  jqhost::PushSession m_session;
  RunningFiles m_files;
  jqhost::Track m_track;
  jqhost::RecordedRun* m_recorded = nullptr;
  std::unique_ptr<RunJournal> m_journal;
};

}  // namespace jqstitch

#endif  // JQSTITCH_LIVE_LIVE_RUN_H

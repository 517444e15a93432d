#ifndef JQSTITCH_LIVE_RUNNING_FILES_H
#define JQSTITCH_LIVE_RUNNING_FILES_H

#include <chrono>
#include <string>

#include "console/console.h"
#include "host/run/push_session.h"
#include "live/live_options.h"

namespace jqstitch {

/// The files that a live run keeps up to date while it goes on: the picture so far
/// with --save-every, and the preview.
class RunningFiles {
 public:
  /// The arguments must outlive this.
  RunningFiles(const LiveOptions& options, Console& console, const jqhost::PushSession& session,
               const jqhost::FramePreparation& preparation);

  /// To be called after every frame; saves what has changed and is due.
  void Refresh(const jqhost::FrameResult& result);
  /// Saves the preview now, if one was asked for.
  void SavePreview();

 private:
  using Clock = std::chrono::steady_clock;

  void Save(bool isPreview);

  const LiveOptions& m_options;
  Console& m_console;
  const jqhost::PushSession& m_session;
  const jqhost::FramePreparation& m_preparation;
  int m_placed = 0;
  bool m_unsaved = false, m_unshown = false;  // the picture has changed since
  Clock::time_point m_lastSave = Clock::now(), m_lastPreview = m_lastSave;
};

}  // namespace jqstitch

#endif  // JQSTITCH_LIVE_RUNNING_FILES_H

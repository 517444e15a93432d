#ifndef JQSTITCH_JOURNAL_RUN_JOURNAL_H
#define JQSTITCH_JOURNAL_RUN_JOURNAL_H

#include <memory>

#include "console/console.h"
#include "host/journal/journal_writer.h"
#include "run/recorder.h"

namespace jqstitch {

/// The journal of a live run, and what people are told of it. A journal that cannot be
/// written ends early, is told at once, and makes the run's exit code 1; the run goes on.
class RunJournal {
 public:
  /// The arguments must outlive this.
  RunJournal(std::unique_ptr<jqhost::JournalWriter> writer, Console& console, Recorder& recorder)
      : m_writer(std::move(writer)), m_console(console), m_recorder(recorder) {}

  jqhost::JournalWriter& Writer() { return *m_writer; }

  /// To be called after every frame: tells what is new.
  void Tell();
  /// Waits for what is to be written yet, and puts how it went into the summary.
  void NoteEnd();
  /// Records that the picture was saved, and ends the journal.
  /// @return whether all of it could be written
  bool Close(const jqhost::PictureEntry& picture);

 private:
  std::unique_ptr<jqhost::JournalWriter> m_writer;
  Console& m_console;
  Recorder& m_recorder;
  bool m_problemTold = false;
  double m_waitToldAt = 0.0;  // seconds waited when it was told last
};

}  // namespace jqstitch

#endif  // JQSTITCH_JOURNAL_RUN_JOURNAL_H

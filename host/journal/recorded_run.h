#ifndef JQHOST_JOURNAL_RECORDED_RUN_H
#define JQHOST_JOURNAL_RECORDED_RUN_H

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/journal/journal_reader.h"
#include "host/journal/journal_replay.h"
#include "host/journal/journal_writer.h"
#include "host/run/stop_token.h"

namespace jqhost {

class FrameSource;
class PushSession;

/// What of a recorded run is to be used.
struct RecordedPart {
  std::vector<int> drop;     ///< frames to leave out
  std::optional<int> until;  ///< the last frame to use
};

/// A journal that was read, to go on from it or to make its picture.
class RecordedRun {
 public:
  /// Reads the journal. Raises `InputError`; of a damaged journal only a part before the
  /// damage can be used.
  RecordedRun(const std::string& folder, const RecordedPart& part);

  const JournalHeader& Header() const { return m_folder->Header(); }
  /// The frames that are used; the last one.
  const std::vector<JournalStep>& Steps() const { return m_log.steps.Steps(); }
  const FrameEntry& LastFrame() const;
  /// Whether these words name the files or folders that the recorded frames came from.
  bool IsSource(const std::vector<std::string>& source) const;
  /// Numbers that `part` takes out.
  const std::vector<int>& TakenOut() const { return m_takenOut; }
  /// What a killed run had begun to write, one sentence each.
  const std::vector<std::string>& Torn() const { return m_log.torn; }

  /// Paints the mosaic anew and lets the session go on from there. Raises `InputError`.
  /// @param thumbnails whether the results are to have small pictures
  /// @param onFrame hears how many frames are done
  /// @return the frames' results; nothing where a stop was asked for
  std::optional<std::vector<FrameResult>> Rebuild(PushSession& session, bool thumbnails,
                                                  const StopToken& stop,
                                                  const std::function<void(int)>& onFrame);

  /// Goes on writing the journal. What `part` takes out is taken back in it when `keepCut`
  /// is set. Raises `InputError`. To be called once, and last.
  std::unique_ptr<JournalWriter> Write(const JournalPace& pace, bool keepCut);

 private:
  std::unique_ptr<JournalFolder> m_folder;
  JournalLog m_log;
  std::vector<int> m_takenOut;
};

/// Passes over the frames of a source up to the one recorded last, and over those that
/// would not have been taken after it. Raises `InputError` where that frame is not there.
void PassRecorded(FrameSource& source, const FrameEntry& last, int every);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_RECORDED_RUN_H

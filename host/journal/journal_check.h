#ifndef JQHOST_JOURNAL_JOURNAL_CHECK_H
#define JQHOST_JOURNAL_JOURNAL_CHECK_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/run/stop_token.h"

namespace jqhost {

/// How a saved picture compares with the same painted anew from the journal.
struct JournalCheck {
  int frames = 0;                 ///< recorded, all of them whole
  std::vector<std::string> torn;  ///< what a killed run had begun to write, sentences
  std::string picture;            ///< path of the one compared
  /// What differs from the same picture saved the same way, one sentence; empty: nothing.
  std::string difference;
};

/// Reads every line and every frame of a journal, paints the picture that was saved last
/// anew, and compares. Changes nothing. Raises `InputError` where the journal is damaged,
/// no saved picture is recorded, or it cannot be read.
/// @param picture compared instead of the recorded path; empty: that one
/// @param onFrame hears how many frames are done, of how many
/// @return nothing where a stop was asked for
std::optional<JournalCheck> CheckJournal(const std::string& folder, const std::string& picture,
                                         const StopToken& stop,
                                         const std::function<void(int, int)>& onFrame);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JOURNAL_CHECK_H

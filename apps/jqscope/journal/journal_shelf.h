#ifndef JQSCOPE_JOURNAL_JOURNAL_SHELF_H
#define JQSCOPE_JOURNAL_JOURNAL_SHELF_H

#include <optional>
#include <string>
#include <vector>

#include "host/journal/journal_entries.h"

namespace jqscope {

// The shelf is the folder in which each run of the window has a journal in a folder of its
// own, named by the time at which the run began. Journals of runs that came to their end
// are moved to `kept` in it, or removed; so what lies on the shelf itself and is held by no
// process was left by a program that crashed.

/// A run that a crash has left.
struct LeftRun {
  std::string folder;
  int frames = 0;                   ///< placed ones that were recorded
  std::vector<std::string> source;  ///< as the journal's header has it
  jqhost::FrameEntry last;          ///< the frame placed last
  bool damaged = false;             ///< only what stands before the damage can be used
};

/// What becomes of the journal of a run that is over.
enum class JournalEnd {
  kLeave,   ///< it stays on the shelf, and is offered at the next start
  kRemove,  ///< nobody needs it any more
  kKeep,    ///< it is put aside for good
};

/// Where the journal of a run that begins now goes.
std::string NewJournalFolder(const std::string& shelf);

/// The newest left run with at least one frame. Folders that hold none, or that cannot be
/// read, are passed over.
std::optional<LeftRun> FindLeftRun(const std::string& shelf);

/// Puts away a journal that this process does not hold. Raises `InputError` where that does
/// not work, another process holding it among the reasons.
void PutAway(const std::string& folder, JournalEnd end);

}  // namespace jqscope

#endif  // JQSCOPE_JOURNAL_JOURNAL_SHELF_H

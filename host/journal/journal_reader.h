#ifndef JQHOST_JOURNAL_JOURNAL_READER_H
#define JQHOST_JOURNAL_JOURNAL_READER_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/journal/journal_entries.h"
#include "host/journal/journal_folder.h"
#include "host/journal/journal_steps.h"

namespace jqhost {

/// A picture that was saved, and what it shows.
struct RecordedPicture {
  PictureEntry entry;
  JournalSteps steps;
};

/// What the log of a journal holds, up to the first entry that is torn or damaged.
struct JournalLog {
  JournalSteps steps;
  std::optional<RecordedPicture> picture;  ///< the one saved last
  std::uint64_t length = 0;                ///< of the lines used, bytes
  /// What a run that was killed had begun to write, one sentence each; it is not used.
  std::vector<std::string> torn;
  /// What is wrong with a line that was complete once; empty: nothing. What stands before
  /// it is in `steps`.
  std::string damage;
  /// The largest number that any entry has; the next one's is larger.
  int lastNumber = 0;

  explicit JournalLog(int level) : steps(level) {}
};

/// Reads the log and looks whether the files of its frames are there in full; their bytes
/// are checked when they are used (`ReadFrameFile`).
///
/// Torn is: a last line without its end, and frames at the end of the log whose files are
/// missing or shorter than the line says. Everything else that is wrong is damage. Raises
/// `InputError` where the log cannot be read at all.
JournalLog ReadLog(const JournalFolder& folder);

/// The pixels of a recorded frame. Raises `InputError` naming the file, where it has been
/// changed since it was written.
cv::Mat ReadFrameFile(const JournalFolder& folder, const FrameEntry& frame);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JOURNAL_READER_H

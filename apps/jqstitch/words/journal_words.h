#ifndef JQSTITCH_WORDS_JOURNAL_WORDS_H
#define JQSTITCH_WORDS_JOURNAL_WORDS_H

#include <string>
#include <vector>

#include "host/journal/recorded_run.h"

namespace jqstitch {

/// What to know of a run that was taken up again: how many frames it had, what was lost
/// of it, what was left out. Sentences for the summary.
std::vector<std::string> RecordedNotes(const jqhost::RecordedRun& run, const std::string& folder);

}  // namespace jqstitch

#endif  // JQSTITCH_WORDS_JOURNAL_WORDS_H

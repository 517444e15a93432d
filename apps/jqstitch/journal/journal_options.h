#ifndef JQSTITCH_JOURNAL_JOURNAL_OPTIONS_H
#define JQSTITCH_JOURNAL_JOURNAL_OPTIONS_H

#include <string>

namespace CLI {
class App;
}

namespace jqstitch {

struct JournalOptions {
  std::string folder;       ///< empty: no journal
  double flushEvery = 2.0;  ///< seconds
};

/// Adds --journal-every. `options` must outlive the parsing.
void AddJournalEvery(CLI::App& command, JournalOptions& options);
/// Adds --journal, too.
void AddJournalOptions(CLI::App& command, JournalOptions& options);

}  // namespace jqstitch

#endif  // JQSTITCH_JOURNAL_JOURNAL_OPTIONS_H

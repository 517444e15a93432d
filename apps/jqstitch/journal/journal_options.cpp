#include "journal/journal_options.h"

#include <CLI/CLI.hpp>

namespace jqstitch {

void AddJournalEvery(CLI::App& command, JournalOptions& options) {
  command
      .add_option("--journal-every", options.flushEvery,
                  "brings the journal to the disk every N seconds (2): what a loss of power can "
                  "cost; a crash costs at most the frame in hand")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.01, 1e6));
}

void AddJournalOptions(CLI::App& command, JournalOptions& options) {
  CLI::Option* journal =
      command
          .add_option("--journal", options.folder,
                      "new or empty folder in which every placed frame is recorded, so that "
                      "jqstitch resume can go on after a crash")
          ->type_name("DIR");
  AddJournalEvery(command, options);
  command.get_option("--journal-every")->needs(journal);
}

}  // namespace jqstitch

#include "words/journal_words.h"

#include <algorithm>

namespace jqstitch {

std::vector<std::string> RecordedNotes(const jqhost::RecordedRun& run, const std::string& folder) {
  const auto frames =
      std::count_if(run.Steps().begin(), run.Steps().end(),
                    [](const jqhost::JournalStep& step) { return step.frame.has_value(); });
  const std::string& last = run.LastFrame().result.name;
  std::vector<std::string> notes = {
      frames == 1 ? "Taken up from the journal '" + folder + "': 1 frame, '" + last + "'"
                  : "Taken up from the journal '" + folder + "': " + std::to_string(frames) +
                        " frames, the last one '" + last + "'"};
  if (!run.TakenOut().empty()) {
    std::string numbers;
    for (auto number = run.TakenOut().rbegin(); number != run.TakenOut().rend(); ++number) {
      numbers += (numbers.empty() ? "" : ", ") + std::to_string(*number);
    }
    notes.push_back("Left out of it: " + numbers);
  }
  for (const std::string& torn : run.Torn()) {
    notes.push_back("Dropped, because the recorded run ended while it was written: " + torn);
  }
  return notes;
}

}  // namespace jqstitch

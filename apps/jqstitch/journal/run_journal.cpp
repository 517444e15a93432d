#include "journal/run_journal.h"

#include "words/numbers.h"

using jqhost::JournalHealth;

namespace jqstitch {
namespace {

// Less is what a busy computer does to every program.
constexpr double kWaitWorthTelling = 0.5;  // seconds

std::string ProblemText(const JournalHealth& health, const std::string& folder) {
  return "the journal '" + folder + "' ends after " + std::to_string(health.frames) +
         (health.frames == 1 ? " frame: " : " frames: ") + health.problem;
}

}  // namespace

void RunJournal::Tell() {
  const JournalHealth health = m_writer->Health();
  const std::string& folder = m_writer->Folder().Path();
  if (!health.problem.empty() && !m_problemTold) {
    m_problemTold = true;
    const std::string text = ProblemText(health, folder);
    m_console.Complain(text + "; the run goes on without it");
    m_console.Event({{"event", "journal"}, {"folder", folder}, {"problem", text}});
  }
  if (health.secondsWaited - m_waitToldAt >= kWaitWorthTelling) {
    m_waitToldAt = health.secondsWaited;
    m_console.Event(
        {{"event", "journal"}, {"folder", folder}, {"secondsWaited", health.secondsWaited}});
  }
}

void RunJournal::NoteEnd() {
  m_writer->Settle();
  const JournalHealth health = m_writer->Health();
  const std::string& folder = m_writer->Folder().Path();
  if (!health.problem.empty()) {
    m_problemTold = true;
    return m_recorder.Fail(ProblemText(health, folder));
  }
  m_recorder.Note("Journal: " + folder + ", " + std::to_string(health.frames) +
                  (health.frames == 1 ? " frame" : " frames") + " recorded");
  if (health.secondsWaited >= kWaitWorthTelling) {
    m_recorder.Note("Waited " + Fixed(health.secondsWaited, 1) +
                    " s for the journal; its disk is slower than the frames come");
  }
}

bool RunJournal::Close(const jqhost::PictureEntry& picture) {
  if (!picture.save.path.empty()) m_writer->AddPicture(picture);
  m_writer->Close();
  const JournalHealth health = m_writer->Health();
  if (health.problem.empty()) return true;
  if (!m_problemTold) m_console.Complain(ProblemText(health, m_writer->Folder().Path()));
  return false;
}

}  // namespace jqstitch

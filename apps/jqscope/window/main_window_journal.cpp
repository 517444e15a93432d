// Runs that are recorded, and those that a crash has left.
#include <QStandardPaths>
#include <QStatusBar>

#include "window/main_window.h"

namespace jqscope {

void MainWindow::ConnectJournal() {
  m_shelf = m_options.journal;
  if (m_shelf.isEmpty() && m_settings != nullptr && !m_options.IsScript()) {
    m_shelf = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/journals";
  }
  connect(m_journalBar, &JournalBar::takeUp, this, &MainWindow::TakeUp);
  connect(m_journalBar, &JournalBar::throwAway, this, [this] {
    m_session.ThrowAway(m_journalBar->Offered(), m_shelf.toLocal8Bit().toStdString());
  });
  connect(&m_session, &Session::leftRunFound, this, [this](const LeftRun& left) {
    if (!m_anyRun) m_journalBar->Offer(left);
  });
  connect(&m_session, &Session::takingUp, this, [this](int done, int of) {
    statusBar()->showMessage(tr("Rebuilding the picture: frame %1 of %2").arg(done).arg(of));
  });
  connect(&m_session, &Session::takenUp, this, [this](const QString& problem) {
    if (problem.isEmpty()) return;
    statusBar()->clearMessage();
    m_journalBar->Tell(tr("The run cannot be taken up: %1").arg(problem));
  });
  if (m_shelf.isEmpty() || m_options.run) return;
  m_session.LookForLeftRun(m_shelf.toLocal8Bit().toStdString());
}

void MainWindow::TakeUp() {
  const LeftRun left = m_journalBar->Offered();
  // A source of the same name stays as it is set, a watched folder for one.
  if (SourceWords(m_session.Source()) != left.source) {
    SourceChoice choice = ChooseSource(left.source);
    choice.microscope = m_options.microscope;
    SetSource(choice, left.source.size() == 1 ? QString::fromLocal8Bit(left.source.front().c_str())
                                              : QString());
  }
  m_anyRun = true;
  m_savePath.clear();
  m_savedFrames = 0;
  m_session.TakeUp(left, m_preferences.run.mostMemory);
  m_view->setFocus();
}

// The person was asked about what is not saved, and a script has saved it. A picture that
// is still being written may yet fail.
JournalEnd MainWindow::EndOfJournal() const {
  if (m_session.Saving() > 0) return JournalEnd::kLeave;
  return m_preferences.journal == JournalKeeping::kAlways ? JournalEnd::kKeep : JournalEnd::kRemove;
}

}  // namespace jqscope

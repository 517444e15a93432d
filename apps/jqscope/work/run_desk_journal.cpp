// How a run begins, is recorded, taken up after a crash, and ends.
#include <QCoreApplication>
#include <exception>

#include "host/input_error.h"
#include "host/journal/recorded_run.h"
#include "work/run_desk.h"

namespace jqscope {
namespace {

struct JournalWords {
  Q_DECLARE_TR_FUNCTIONS(RunDesk)
};

}  // namespace

void RunDesk::Start(const RunSettings& settings, JournalEnd earlier) {
  Begin(settings, std::make_unique<jqhost::FramePreparation>(settings.preparation),
        std::make_unique<jqhost::PushSession>(settings.stitch), earlier);
  m_session->LimitMemory(settings.mostMemory);
  if (settings.journal.empty()) return;
  try {
    Record(std::make_unique<jqhost::JournalWriter>(
        std::make_unique<jqhost::JournalFolder>(
            settings.journal,
            jqhost::MakeHeader(settings.stitch, settings.preparation, 1, settings.source)),
        jqhost::JournalPace()));
  } catch (const std::exception& error) {
    m_report.journalProblem = QString::fromLocal8Bit(error.what());
  }
}

void RunDesk::TakeUp(const LeftRun& left, std::int64_t mostMemory, const jqhost::StopToken& stop,
                     const std::function<void(int)>& onFrame) {
  jqhost::RecordedPart part;
  if (left.damaged) part.until = left.last.number;
  jqhost::RecordedRun recorded(left.folder, part);
  RunSettings settings;
  settings.stitch = recorded.Header().stitch;
  settings.preparation = recorded.Header().preparation;
  settings.source = recorded.Header().source;
  settings.journal = left.folder;
  settings.mostMemory = mostMemory;
  auto preparation = std::make_unique<jqhost::FramePreparation>(settings.preparation);
  auto session = std::make_unique<jqhost::PushSession>(settings.stitch);
  session->LimitMemory(mostMemory);
  const auto frames = recorded.Rebuild(*session, false, stop, onFrame);
  if (!frames) return;
  const jqhost::FrameEntry& last = recorded.LastFrame();
  preparation->GoOn(last.samples, last.size);

  Begin(settings, std::move(preparation), std::move(session), JournalEnd::kLeave);
  LetUndo(last.size);
  for (const jqhost::FrameResult& frame : *frames) {
    m_report.path.append(QPoint(frame.position.x, frame.position.y));
    ++m_report.causes[frame.cause];
  }
  m_report.stitched = static_cast<int>(frames->size());
  m_report.last = frames->back();
  m_place = m_lastPlaced = recorded.Steps().back().place;
  const cv::Size size = m_session->Judge().WorkingSize();
  m_report.frameSize = QSize(size.width, size.height);
  m_report.liveRect = QRectF(m_place.x, m_place.y, size.width, size.height);
  ShowMosaic(cv::Rect());
  try {
    Record(recorded.Write(jqhost::JournalPace(), left.damaged));
  } catch (const std::exception& error) {
    m_report.journalProblem = QString::fromLocal8Bit(error.what());
  }
  Tell(JournalWords::tr("The run goes on: bring its last frame under the camera"));
}

void RunDesk::StitchFiles(const BatchOrder& order, JournalEnd earlier) {
  RunSettings settings;
  settings.stitch = jqhost::BatchSettings();
  settings.preparation = order.preparation;
  auto preparation = std::make_unique<jqhost::FramePreparation>(settings.preparation);
  Begin(settings, std::move(preparation), nullptr, earlier);
  m_batch = std::make_unique<BatchRun>(order, m_tiles, m_report, onProgress);
  m_batch->Run();
}

void RunDesk::End(JournalEnd journal) {
  m_session.reset();
  EndJournal(journal);
}

void RunDesk::Record(std::unique_ptr<jqhost::JournalWriter> journal) {
  m_journal = std::move(journal);
  m_session->Record(*m_journal, [this] { return m_preparation->Summary(); });
}

void RunDesk::EndJournal(JournalEnd end) {
  if (!m_journal) return;
  const std::string folder = m_journal->Folder().Path();
  // Without a frame there is nothing to take up.
  if (m_journal->LastNumber() == 0) end = JournalEnd::kRemove;
  m_journal.reset();
  try {
    PutAway(folder, end);
  } catch (const std::exception& error) {
    Tell(QString::fromLocal8Bit(error.what()));
  }
}

void RunDesk::CheckJournal() {
  if (!m_journal || !m_report.journalProblem.isEmpty()) return;
  m_report.journalProblem = QString::fromLocal8Bit(m_journal->Health().problem.c_str());
}

}  // namespace jqscope

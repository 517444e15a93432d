#include "work/session.h"

#include <exception>
#include <utility>

namespace jqscope {

Session::Session(QObject* parent) : QObject(parent) {
  connect(&m_thread, &StitchThread::reported, this, &Session::reported);
  connect(&m_thread, &StitchThread::tilesCame, this, &Session::tilesCame);
  connect(&m_thread, &StitchThread::complained, this, &Session::complained);
}

Session::~Session() {
  m_stop.Request();
  m_batchStop->Request();
  // Captures put frames into the thread's inbox, so they end before it.
  qDeleteAll(findChildren<Capture*>(QString(), Qt::FindDirectChildrenOnly));
}

void Session::SetSource(const SourceChoice& choice) {
  if (m_capture != nullptr) m_capture->Retire();
  m_capture = nullptr;
  m_batchStop->Request();
  m_choice = choice;
  const bool live = choice.IsLive();
  m_thread.Post([live](RunDesk& desk) {
    desk.Stop();
    desk.showsLive = live;
  });
  if (live) OpenCapture(choice);
}

void Session::OpenCapture(const SourceChoice& choice) {
  m_capture = new Capture(choice, m_thread.Frames(), m_stage);
  m_capture->setParent(this);
  connect(m_capture, &Capture::opened, this, &Session::sourceOpened);
  connect(m_capture, &Capture::failed, this, &Session::sourceFailed);
  connect(m_capture, &Capture::lightHeld, this, &Session::lightHeld);
  m_capture->HoldLight(m_holdLight && choice.IsLive());
  m_capture->Start();
}

void Session::Start(const RunSettings& settings, JournalEnd earlier) {
  if (!m_choice.IsLive() && m_capture != nullptr) m_capture->Retire();
  m_thread.Frames().ResetDropped();
  m_thread.Post([settings, earlier](RunDesk& desk) { desk.Start(settings, earlier); });
  if (!m_choice.IsLive()) OpenCapture(m_choice);
}

void Session::StitchFiles(const jqhost::PreparationSettings& preparation, JournalEnd earlier) {
  if (m_capture != nullptr) m_capture->Retire();
  m_batchStop = std::make_shared<jqhost::StopToken>();
  const BatchOrder order{m_choice.paths, preparation, m_batchStop};
  m_thread.Post([order, earlier](RunDesk& desk) { desk.StitchFiles(order, earlier); });
}

void Session::LookForLeftRun(const std::string& shelf) {
  m_thread.Post([this, shelf](RunDesk&) {
    const std::optional<LeftRun> left = FindLeftRun(shelf);
    if (!left) return;
    const auto tell = [this, found = *left] { Q_EMIT leftRunFound(found); };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
  });
}

void Session::TakeUp(const LeftRun& left, std::int64_t mostMemory) {
  m_thread.Frames().ResetDropped();
  m_thread.Post([this, left, mostMemory](RunDesk& desk) {
    QString problem;
    try {
      desk.TakeUp(left, mostMemory, m_stop, [&](int done) { Q_EMIT takingUp(done, left.frames); });
    } catch (const std::exception& error) {
      problem = QString::fromLocal8Bit(error.what());
    }
    Q_EMIT takenUp(problem);
  });
  if (m_choice.IsLive()) return;
  if (m_capture != nullptr) m_capture->Retire();
  SourceChoice rest = m_choice;
  rest.after = left.last;
  OpenCapture(rest);
}

void Session::ThrowAway(const LeftRun& left, const std::string& shelf) {
  m_thread.Post([folder = left.folder](RunDesk&) { PutAway(folder, JournalEnd::kRemove); });
  LookForLeftRun(shelf);
}

void Session::HoldLight(bool hold) {
  m_holdLight = hold;
  if (m_capture != nullptr && m_choice.IsLive()) m_capture->HoldLight(hold);
}

void Session::Pause(bool pause) {
  m_thread.Post([pause](RunDesk& desk) { desk.Pause(pause); });
}

void Session::Stop() {
  m_batchStop->Request();
  m_thread.Post([](RunDesk& desk) { desk.Stop(); });
}

void Session::CancelSaving() {
  for (SaveJob* job : findChildren<SaveJob*>(QString(), Qt::FindDirectChildrenOnly)) job->Cancel();
}

void Session::Save(const SaveOrder& order) {
  auto* job = new SaveJob(order);
  job->setParent(this);
  ++m_saving;
  connect(job, &SaveJob::done, this, [this, job](const QString& path, const QString& problem) {
    --m_saving;
    job->deleteLater();
    Q_EMIT saved(path, problem);
  });
  connect(job, &SaveJob::progressed, this, &Session::saveProgressed);
  m_thread.Post([job](RunDesk& desk) {
    Snapshot snapshot;
    try {
      snapshot = desk.TakeSnapshot(job->Order().trim);
    } catch (const std::exception& error) {
      return job->Fail(QString::fromLocal8Bit(error.what()));
    }
    job->Start(std::move(snapshot));
  });
}

}  // namespace jqscope

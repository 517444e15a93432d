#include "work/session.h"

namespace jqscope {

Session::Session(QObject* parent) : QObject(parent) {
  connect(&m_thread, &StitchThread::reported, this, &Session::reported);
  connect(&m_thread, &StitchThread::tilesCame, this, &Session::tilesCame);
  connect(&m_thread, &StitchThread::complained, this, &Session::complained);
}

Session::~Session() {
  // Captures put frames into the thread's inbox, so they end before it.
  qDeleteAll(findChildren<Capture*>(QString(), Qt::FindDirectChildrenOnly));
}

void Session::SetSource(const SourceChoice& choice) {
  if (m_capture != nullptr) m_capture->Retire();
  m_capture = nullptr;
  m_choice = choice;
  const bool live = choice.IsLive();
  m_thread.Post([live](RunDesk& desk) {
    desk.Stop();
    desk.showsLive = live;
  });
  if (live) OpenCapture();
}

void Session::OpenCapture() {
  m_capture = new Capture(m_choice, m_thread.Frames(), m_stage);
  m_capture->setParent(this);
  connect(m_capture, &Capture::opened, this, &Session::sourceOpened);
  connect(m_capture, &Capture::failed, this, &Session::sourceFailed);
  m_capture->Start();
}

void Session::Start(const RunSettings& settings) {
  if (!m_choice.IsLive() && m_capture != nullptr) m_capture->Retire();
  m_thread.Frames().ResetDropped();
  m_thread.Post([settings](RunDesk& desk) { desk.Start(settings); });
  if (!m_choice.IsLive()) OpenCapture();
}

void Session::Pause(bool pause) {
  m_thread.Post([pause](RunDesk& desk) { desk.Pause(pause); });
}

void Session::Stop() {
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
  m_thread.Post([job](RunDesk& desk) { job->Start(desk.TakeSnapshot(job->Order().trim)); });
}

}  // namespace jqscope

#include "source/capture.h"

#include <exception>
#include <utility>

#include "host/journal/recorded_run.h"

namespace jqscope {
namespace {

constexpr double kTryAgainAfter = 1.0;  // seconds

}  // namespace

Capture::Capture(SourceChoice choice, Inbox& inbox, Stage& stage)
    : m_choice(std::move(choice)), m_inbox(inbox), m_stage(stage) {}

void Capture::Start() {
  m_thread = std::thread([this] { Run(); });
}

Capture::~Capture() {
  // Once retired it has no frame in the inbox: the one that waits is the next source's.
  if (!m_stop.Requested()) m_inbox.Dismiss(m_stop);
  if (m_thread.joinable()) m_thread.join();
}

void Capture::Retire() {
  m_inbox.Dismiss(m_stop);
  disconnect();
  connect(this, &Capture::finished, this, &QObject::deleteLater, Qt::QueuedConnection);
  // A thread that ended before the connection was made tells nobody.
  if (m_finished.exchange(true)) deleteLater();
}

void Capture::Run() {
  while (!m_stop.Requested()) {
    const bool again = RunOnce() && m_choice.kind == SourceKind::kCamera;
    if (!again) break;
    m_stop.Sleep(kTryAgainAfter);
  }
  if (m_finished.exchange(true)) Q_EMIT finished();
}

// Until the source ends or a stop is asked for.
void Capture::TakeFrames(jqhost::FrameSource& source) {
  const auto whenFull = m_choice.IsLive() ? Inbox::WhenFull::kReplace : Inbox::WhenFull::kWait;
  bool held = false;
  TimedFrame next;
  while (!m_stop.Requested()) {
    if (m_hold != held) {
      held = !held;
      Q_EMIT lightHeld(held, source.HoldLight(held));
    }
    if (!source.Next(next.frame, true)) return;
    next.taken = Clock::now();
    if (!m_inbox.Put(next, whenFull, m_stop)) return;
  }
}

// False when trying again is of no use.
bool Capture::RunOnce() {
  const bool isCamera = m_choice.kind == SourceKind::kCamera;
  try {
    const std::unique_ptr<jqhost::FrameSource> source = OpenSource(m_choice, m_stage, m_stop);
    if (m_choice.after) jqhost::PassRecorded(*source, *m_choice.after, 1);
    Q_EMIT opened();
    TakeFrames(*source);
    if (m_stop.Requested()) return false;
    if (isCamera) {
      Q_EMIT failed(tr("The camera gives no more frames"), true);
      return true;
    }
  } catch (const std::exception& error) {
    if (m_stop.Requested()) return false;
    Q_EMIT failed(QString::fromLocal8Bit(error.what()), isCamera);
    if (isCamera) return true;
  }
  TimedFrame end;
  end.isEnd = true;
  m_inbox.Put(end, Inbox::WhenFull::kWait, m_stop);
  return false;
}

}  // namespace jqscope

#ifndef JQSCOPE_SOURCE_CAPTURE_H
#define JQSCOPE_SOURCE_CAPTURE_H

#include <QObject>
#include <atomic>
#include <thread>

#include "host/run/stop_token.h"
#include "source/source_choice.h"
#include "work/inbox.h"

namespace jqscope {

/// Takes frames from a source on a thread of its own and puts them into the inbox. A
/// camera that vanishes is tried again every second.
class Capture : public QObject {
  Q_OBJECT

 public:
  /// @param inbox, stage must outlive the capture
  Capture(SourceChoice choice, Inbox& inbox, Stage& stage);
  /// Waits for the frame in hand.
  ~Capture() override;

  /// To be called once, after signals are connected.
  void Start();

  /// Ends the capture without waiting; it deletes itself when its thread is done. No
  /// frame of it comes after this call.
  void Retire();

  /// Asks the source to hold exposure and white balance before the next frame, or to give
  /// them free; kept when a camera comes back.
  void HoldLight(bool hold) { m_hold = hold; }

 Q_SIGNALS:
  /// The source gives frames (again).
  void opened();
  /// It cannot be opened, or has vanished. @param retrying whether it is tried again
  void failed(const QString& why, bool retrying);
  /// Whether it holds exposure and white balance as asked.
  void lightHeld(bool hold, bool obeyed);
  void finished();

 private:
  void Run();
  bool RunOnce();
  void TakeFrames(jqhost::FrameSource& source);

  const SourceChoice m_choice;
  Inbox& m_inbox;
  Stage& m_stage;
  jqhost::StopToken m_stop;
  std::atomic<bool> m_hold{false};
  std::atomic<bool> m_finished{false};  // set by whichever comes first: end or `Retire`
  std::thread m_thread;
};

}  // namespace jqscope

#endif  // JQSCOPE_SOURCE_CAPTURE_H

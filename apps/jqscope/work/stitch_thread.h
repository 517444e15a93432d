#ifndef JQSCOPE_WORK_STITCH_THREAD_H
#define JQSCOPE_WORK_STITCH_THREAD_H

#include <QObject>
#include <atomic>
#include <functional>
#include <mutex>
#include <thread>

#include "work/inbox.h"
#include "work/run_desk.h"

namespace jqscope {

/// The thread that the stitcher lives on. The window posts tasks and never waits.
class StitchThread : public QObject {
  Q_OBJECT

 public:
  /// @param tiles must outlive the thread
  explicit StitchThread(TilePyramid& tiles);
  /// Waits for the frame in hand.
  ~StitchThread() override;

  /// Runs on the thread of the stitcher, between two frames.
  void Post(std::function<void(RunDesk&)> task);
  /// What becomes of the run's journal when the thread ends; it is left where nothing is
  /// said.
  void EndWith(JournalEnd journal) { m_end = journal; }
  Inbox& Frames() { return m_inbox; }

  /// The newest report. `reported` comes once for all reports since the last call.
  RunReport TakeReport();
  /// Asks for the tiles that the view has told the pyramid to want.
  void BringWantedTiles();

 Q_SIGNALS:
  void reported();
  void tilesCame();
  /// A task raised an error.
  void complained(const QString& what);

 private:
  void Run();
  void Publish();

  JournalEnd m_end = JournalEnd::kLeave;
  Inbox m_inbox;
  RunDesk m_desk;
  std::mutex m_mutex;
  RunReport m_newest;
  bool m_told = false;
  std::atomic<bool> m_bringing{false};
  Finder m_finder;  // posts to the inbox, so it ends before it
  std::thread m_thread;
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_STITCH_THREAD_H

#ifndef JQSCOPE_WORK_INBOX_H
#define JQSCOPE_WORK_INBOX_H

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

#include "host/run/stop_token.h"
#include "work/timed_frame.h"

namespace jqscope {

/// What waits for the stitching thread: tasks in their order, and one frame, the newest.
/// Frames are never queued. All methods may be called from any thread.
class Inbox {
 public:
  using Task = std::function<void()>;
  /// What a source does that finds the previous frame still waiting.
  enum class WhenFull {
    kReplace,  ///< a camera: the older frame is dropped and counted
    kWait,     ///< a file, which loses nothing by waiting
  };

  /// One task or one frame.
  struct Item {
    Task task;
    std::optional<TimedFrame> frame;
  };

  void Post(Task task);
  /// Hands a frame over. False, without doing so, when the source was asked to stop.
  bool Put(TimedFrame frame, WhenFull whenFull, const jqhost::StopToken& stop);
  /// Asks a source to stop; from now on none of its frames comes in, and the one that
  /// waits is forgotten.
  void Dismiss(jqhost::StopToken& stop);

  /// Blocks until there is something to do; tasks come first. Once closed, the tasks that
  /// are left, which a picture to be saved may be among, and then nothing.
  /// @param takeFrames whether frames are wanted now
  std::optional<Item> Next(bool takeFrames);
  void Close();

  /// Frames dropped since the last call of `ResetDropped`.
  int Dropped() const;
  void ResetDropped();

 private:
  mutable std::mutex m_mutex;
  std::condition_variable m_filled, m_emptied;
  std::deque<Task> m_tasks;
  std::optional<TimedFrame> m_frame;
  int m_dropped = 0;
  bool m_closed = false;
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_INBOX_H

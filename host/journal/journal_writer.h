#ifndef JQHOST_JOURNAL_JOURNAL_WRITER_H
#define JQHOST_JOURNAL_JOURNAL_WRITER_H

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <opencv2/core.hpp>
#include <string>
#include <thread>

#include "host/journal/journal_entries.h"
#include "host/journal/journal_folder.h"
#include "host/system/append_file.h"

namespace jqhost {

/// How much of a journal can be lost, and how much memory waits for the disk.
struct JournalPace {
  double flushEvery = 2.0;  ///< seconds; a loss of power costs what came since
  /// Pixels that wait to be written. A frame that does not fit waits, but one always fits.
  std::size_t queueBytes = std::size_t{256} << 20;
};

/// How the writing of a journal goes.
struct JournalHealth {
  /// Why nothing more is written; empty while all is well.
  std::string problem;
  int frames = 0;              ///< recorded, and safe from the end of this process
  double secondsWaited = 0.0;  ///< that the run was held up, because the queue was full
};

/// Writes the journal of a run on a thread of its own.
///
/// A frame's file is whole before its line is written, and each line goes out in one
/// piece: a process killed at any moment leaves whole entries and at most one that is
/// torn. The flush brings first the frames and then the lines to the disk, so that the
/// same holds for a loss of power, but for what came since the last flush.
///
/// What cannot be written ends the journal there, not the run: `Health` tells, and later
/// entries are dropped. To be used from one thread; `Health` from any.
class JournalWriter {
 public:
  /// Goes on after `length` bytes of the log, whose rest, torn, is cut off; `lastNumber`
  /// is the last number in use. Raises `InputError`.
  JournalWriter(std::unique_ptr<JournalFolder> folder, const JournalPace& pace,
                std::uint64_t length = 0, int lastNumber = 0);
  /// Writes what waits, and flushes it.
  ~JournalWriter();
  JournalWriter(const JournalWriter&) = delete;
  JournalWriter& operator=(const JournalWriter&) = delete;

  /// Records a placed frame; number, bytes and CRC are filled in here. The pixels are
  /// copied. Waits where too many frames wait for the disk already.
  /// @return its number
  int AddFrame(FrameEntry frame, const cv::Mat& pixels);
  /// @return its number
  int AddContinue(cv::Point place);
  /// The number given out last, to a frame or a place; 0 before the first.
  int LastNumber() const { return m_lastNumber; }
  /// What has this number was taken back. Nothing may hang on it any more.
  void AddUndo(int number);
  void AddPicture(const PictureEntry& picture);

  /// Waits until all has been written.
  void Settle();
  /// The same, flushes and ends the writing.
  void Close();

  JournalHealth Health() const;
  const JournalFolder& Folder() const { return *m_folder; }

 private:
  using Clock = std::chrono::steady_clock;

  struct Item {
    JournalEntry entry;
    cv::Mat pixels;  // of a frame
    std::size_t Bytes() const { return pixels.total() * pixels.elemSize(); }
  };

  void Push(Item item);
  void Run();
  void Write(Item& item);
  void WriteFrame(FrameEntry& frame, const cv::Mat& pixels);
  void Flush();
  void Fail(const std::string& what);

  const std::unique_ptr<JournalFolder> m_folder;
  const JournalPace m_pace;
  int m_lastNumber;  // given out

  mutable std::mutex m_mutex;
  std::condition_variable m_changed;  // of what follows
  std::deque<Item> m_queue;
  std::size_t m_queuedBytes = 0;  // in the queue and in hand
  bool m_inHand = false;
  bool m_closing = false;
  JournalHealth m_health;

  // The thread's own.
  AppendFile m_log;
  std::vector<std::string> m_unflushed;  // files of frames
  bool m_dirty = false;

  std::thread m_thread;
};

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JOURNAL_WRITER_H

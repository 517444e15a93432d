#include "host/journal/journal_writer.h"

#include <new>
#include <opencv2/imgcodecs.hpp>

#include "host/input_error.h"
#include "host/journal/crc32.h"
#include "host/journal/journal_line.h"

namespace jqhost {

JournalWriter::JournalWriter(std::unique_ptr<JournalFolder> folder, const JournalPace& pace,
                             std::uint64_t length, int lastNumber)
    : m_folder(std::move(folder)), m_pace(pace), m_lastNumber(lastNumber) {
  if (const std::error_code error = m_log.Open(m_folder->LogPath(), length)) {
    throw InputError("cannot write '" + m_folder->LogPath() + "': " + error.message());
  }
  FlushFile(m_folder->Path());  // the log's name; what follows does not depend on it
  m_thread = std::thread([this] { Run(); });
}

JournalWriter::~JournalWriter() {
  Close();
}

int JournalWriter::AddFrame(FrameEntry frame, const cv::Mat& pixels) {
  frame.number = ++m_lastNumber;
  try {
    Push({std::move(frame), pixels.clone()});
  } catch (const cv::Exception&) {
    Fail("there is not enough memory for a copy of the frame");
  }
  return m_lastNumber;
}

int JournalWriter::AddContinue(cv::Point place) {
  Push({ContinueEntry{++m_lastNumber, place}, cv::Mat()});
  return m_lastNumber;
}

void JournalWriter::AddUndo(int number) {
  Push({UndoEntry{number}, cv::Mat()});
}

void JournalWriter::AddPicture(const PictureEntry& picture) {
  Push({picture, cv::Mat()});
}

void JournalWriter::Push(Item item) {
  std::unique_lock<std::mutex> lock(m_mutex);
  const std::size_t bytes = item.Bytes();
  const auto fits = [&] {
    return m_queuedBytes == 0 || m_queuedBytes + bytes <= m_pace.queueBytes ||
           !m_health.problem.empty();
  };
  if (!fits()) {
    const auto start = Clock::now();
    m_changed.wait(lock, fits);
    m_health.secondsWaited += std::chrono::duration<double>(Clock::now() - start).count();
  }
  if (!m_health.problem.empty() || m_closing) return;
  m_queuedBytes += bytes;
  m_queue.push_back(std::move(item));
  m_changed.notify_all();
}

void JournalWriter::Run() {
  const auto every =
      std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(m_pace.flushEvery));
  auto flushAt = Clock::now() + every;
  std::unique_lock<std::mutex> lock(m_mutex);
  while (true) {
    const auto something = [this] { return !m_queue.empty() || m_closing; };
    if (m_dirty) {
      m_changed.wait_until(lock, flushAt, something);
    } else {
      m_changed.wait(lock, something);
      flushAt = Clock::now() + every;
    }
    const bool last = m_queue.empty() && m_closing;
    if (m_queue.empty() || Clock::now() >= flushAt) {
      lock.unlock();
      Flush();
      lock.lock();
      flushAt = Clock::now() + every;
      if (last) return;
    }
    if (m_queue.empty()) continue;
    Item item = std::move(m_queue.front());
    m_queue.pop_front();
    m_inHand = true;
    lock.unlock();
    Write(item);
    lock.lock();
    m_queuedBytes -= item.Bytes();
    m_inHand = false;
    m_changed.notify_all();
  }
}

void JournalWriter::Write(Item& item) {
  if (!Health().problem.empty()) return;
  try {
    auto* frame = std::get_if<FrameEntry>(&item.entry);
    if (frame != nullptr) WriteFrame(*frame, item.pixels);
    const std::string line = EncodeLine(EntryJson(item.entry));
    if (const std::error_code error = m_log.Append(line.data(), line.size())) {
      return Fail("cannot write '" + m_folder->LogPath() + "': " + error.message());
    }
    m_dirty = true;
    if (frame == nullptr) return;
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_health.frames;
  } catch (const InputError& error) {
    Fail(error.what());
  } catch (const cv::Exception& error) {
    Fail("cannot record a frame: " + error.err);
  } catch (const std::bad_alloc&) {
    Fail("there is not enough memory to record a frame");
  }
}

void JournalWriter::WriteFrame(FrameEntry& frame, const cv::Mat& pixels) {
  const std::string path = m_folder->FramePath(frame.number);
  std::vector<unsigned char> bytes;
  // The encoder's own choice is its fastest that still filters; measured, no level given
  // by number is faster or smaller.
  if (!cv::imencode(".png", pixels, bytes)) throw InputError("cannot encode '" + path + "'");
  frame.bytes = bytes.size();
  frame.crc = Crc32(bytes.data(), bytes.size());
  if (const std::error_code error = WriteWholeFile(path, bytes.data(), bytes.size())) {
    throw InputError("cannot write '" + path + "': " + error.message());
  }
  m_unflushed.push_back(path);
}

// The frames first: a line on the disk is to have its frame there.
void JournalWriter::Flush() {
  if (!m_dirty) return;
  m_dirty = false;
  std::error_code error;
  for (const std::string& path : m_unflushed) {
    if (!error) error = FlushFile(path);
  }
  if (!error && !m_unflushed.empty()) error = FlushFile(m_folder->FramesPath());
  m_unflushed.clear();
  if (!error) error = m_log.Flush();
  if (error) Fail("cannot bring the journal to the disk: " + error.message());
}

void JournalWriter::Fail(const std::string& what) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_health.problem.empty()) m_health.problem = what;
  m_changed.notify_all();
}

void JournalWriter::Settle() {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_changed.wait(lock, [this] { return m_queue.empty() && !m_inHand; });
}

void JournalWriter::Close() {
  if (!m_thread.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_closing = true;
    m_changed.notify_all();
  }
  m_thread.join();
}

JournalHealth JournalWriter::Health() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_health;
}

}  // namespace jqhost

#include "work/inbox.h"

#include <utility>

namespace jqscope {
namespace {

// A waiting source looks at its stop token that often.
constexpr std::chrono::milliseconds kLookEvery(50);

}  // namespace

void Inbox::Post(Task task) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_tasks.push_back(std::move(task));
  m_filled.notify_all();
}

bool Inbox::Put(TimedFrame frame, WhenFull whenFull, const jqhost::StopToken& stop) {
  std::unique_lock<std::mutex> lock(m_mutex);
  while (m_frame && whenFull == WhenFull::kWait && !stop.Requested() && !m_closed) {
    m_emptied.wait_for(lock, kLookEvery);
  }
  if (stop.Requested() || m_closed) return false;
  if (m_frame) ++m_dropped;
  m_frame = std::move(frame);
  m_filled.notify_all();
  return true;
}

void Inbox::Dismiss(jqhost::StopToken& stop) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  stop.Request();
  m_frame.reset();
  m_emptied.notify_all();
}

std::optional<Inbox::Item> Inbox::Next(bool takeFrames) {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_filled.wait(lock, [&] { return m_closed || !m_tasks.empty() || (takeFrames && m_frame); });
  if (m_closed && m_tasks.empty()) return std::nullopt;
  Item item;
  if (!m_tasks.empty()) {
    item.task = std::move(m_tasks.front());
    m_tasks.pop_front();
  } else {
    item.frame = std::move(m_frame);
    m_frame.reset();
    m_emptied.notify_all();
  }
  return item;
}

void Inbox::Close() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_closed = true;
  m_filled.notify_all();
  m_emptied.notify_all();
}

int Inbox::Dropped() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_dropped;
}

void Inbox::ResetDropped() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_dropped = 0;
}

}  // namespace jqscope

#ifndef JQHOST_RUN_STOP_TOKEN_H
#define JQHOST_RUN_STOP_TOKEN_H

#include <atomic>
#include <chrono>
#include <thread>

namespace jqhost {

/// Asks a run to end soon, keeping what has been stitched. `Request` may be called
/// from any thread and from a signal handler; a request is never taken back.
class StopToken {
 public:
  void Request() { m_requested.store(true, std::memory_order_relaxed); }
  bool Requested() const { return m_requested.load(std::memory_order_relaxed); }

  /// Sleeps; a request ends the sleep within some hundredths of a second.
  void Sleep(double seconds) const {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                        std::chrono::duration<double>(seconds));
    constexpr Clock::duration kSlice = std::chrono::milliseconds(20);
    for (auto now = Clock::now(); !Requested() && now < end; now = Clock::now()) {
      std::this_thread::sleep_for(end - now < kSlice ? end - now : kSlice);
    }
  }

 private:
  // Only a lock-free flag may be set in a signal handler.
  static_assert(std::atomic<bool>::is_always_lock_free);
  std::atomic<bool> m_requested{false};
};

}  // namespace jqhost

#endif  // JQHOST_RUN_STOP_TOKEN_H

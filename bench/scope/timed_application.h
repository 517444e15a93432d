#ifndef JQ_BENCH_SCOPE_TIMED_APPLICATION_H
#define JQ_BENCH_SCOPE_TIMED_APPLICATION_H

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <ctime>
#include <utility>

/// Seconds of the processor that the calling thread has used.
inline double ThreadSeconds() {
  timespec used = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
  return static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec);
}

/// Takes the time of every event that the window's thread handles, from its beginning to its
/// end, with all that is drawn meanwhile: by the clock, and of the processor, which other
/// programs do not lengthen.
class TimedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    // Events that an event sends are part of it.
    if (m_depth > 0) return QApplication::notify(receiver, event);
    ++m_depth;
    const Longest start = Now();
    const bool handled = QApplication::notify(receiver, event);
    const Longest end = Now();
    m_longest.clock = std::max(m_longest.clock, end.clock - start.clock);
    m_longest.processor = std::max(m_longest.processor, end.processor - start.processor);
    --m_depth;
    return handled;
  }

  /// Seconds of the longest event since the last call.
  struct Longest {
    double clock = 0, processor = 0;
  };
  Longest TakeLongest() { return std::exchange(m_longest, Longest()); }

 private:
  static Longest Now() {
    const std::chrono::duration<double> clock = std::chrono::steady_clock::now().time_since_epoch();
    return {clock.count(), ThreadSeconds()};
  }

  int m_depth = 0;
  Longest m_longest;
};

#endif  // JQ_BENCH_SCOPE_TIMED_APPLICATION_H

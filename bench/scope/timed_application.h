#ifndef JQ_BENCH_SCOPE_TIMED_APPLICATION_H
#define JQ_BENCH_SCOPE_TIMED_APPLICATION_H

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <utility>

/// Takes the time of every event that the window's thread handles, from its beginning to its
/// end, with all that is drawn meanwhile.
class TimedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    // Events that an event sends are part of it.
    if (m_depth > 0) return QApplication::notify(receiver, event);
    ++m_depth;
    const auto start = std::chrono::steady_clock::now();
    const bool handled = QApplication::notify(receiver, event);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    m_longest = std::max(m_longest, took.count());
    --m_depth;
    return handled;
  }

  /// Seconds of the longest event since the last call.
  double TakeLongest() { return std::exchange(m_longest, 0.0); }

 private:
  int m_depth = 0;
  double m_longest = 0;
};

#endif  // JQ_BENCH_SCOPE_TIMED_APPLICATION_H

#ifndef JQ_BENCH_REPORT_STOPWATCH_H
#define JQ_BENCH_REPORT_STOPWATCH_H

#include <ctime>

namespace jqbench {

/// What times are measured with. Everything measured runs on one thread, so on an
/// idle machine both tell the same; on a busy one only the processor clock leaves
/// out the time that others took.
enum class Clock { kWall, kProcessor };

inline Clock& ActiveClock() {
  static Clock clock = Clock::kWall;
  return clock;
}

/// Milliseconds since some moment; of the calling thread for the processor clock.
inline double NowMs() {
  timespec now{};
  clock_gettime(ActiveClock() == Clock::kWall ? CLOCK_MONOTONIC : CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}

/// Milliseconds that `work` takes.
template <class Work>
double Milliseconds(Work&& work) {
  const double start = NowMs();
  work();
  return NowMs() - start;
}

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_STOPWATCH_H

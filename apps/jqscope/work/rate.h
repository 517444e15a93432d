#ifndef JQSCOPE_WORK_RATE_H
#define JQSCOPE_WORK_RATE_H

#include <deque>

#include "work/timed_frame.h"

namespace jqscope {

/// Events a second, over the last two seconds.
class Rate {
 public:
  void Add(Clock::time_point now) {
    m_times.push_back(now);
    while (now - m_times.front() > std::chrono::seconds(2)) m_times.pop_front();
  }
  void Clear() { m_times.clear(); }
  double PerSecond() const {
    if (m_times.size() < 2) return 0.0;
    const std::chrono::duration<double> span = m_times.back() - m_times.front();
    return span.count() > 0 ? static_cast<double>(m_times.size() - 1) / span.count() : 0.0;
  }

 private:
  std::deque<Clock::time_point> m_times;
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_RATE_H

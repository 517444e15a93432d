#ifndef JQSTITCH_RUN_SECONDS_SINCE_H
#define JQSTITCH_RUN_SECONDS_SINCE_H

#include <chrono>

namespace jqstitch {

inline double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_SECONDS_SINCE_H

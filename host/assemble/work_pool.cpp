#include "host/assemble/work_pool.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace jqhost {

bool ShareWork(int threads, std::size_t count, const StopToken& stop,
               const std::function<void(int thread, std::size_t piece)>& task,
               const std::function<void(std::size_t done)>& progress) {
  std::atomic<std::size_t> next{0}, done{0};
  std::atomic<bool> failed{false};
  std::exception_ptr failure;
  std::mutex failureMutex;
  const auto work = [&](int thread) {
    while (!failed && !stop.Requested()) {
      const std::size_t piece = next++;
      if (piece >= count) return;
      try {
        task(thread, piece);
      } catch (...) {
        const std::lock_guard<std::mutex> lock(failureMutex);
        if (!failure) failure = std::current_exception();
        failed = true;
      }
      ++done;
      if (thread == 0 && progress && !failed) progress(done);
    }
  };

  const int helpers = static_cast<int>(std::min(static_cast<std::size_t>(threads), count)) - 1;
  std::vector<std::thread> others;
  for (int i = 1; i <= helpers; ++i) {
    try {
      others.emplace_back(work, i);
    } catch (const std::system_error&) {
      break;  // those that there are do it all
    }
  }
  std::exception_ptr ownFailure;
  try {
    work(0);
  } catch (...) {  // of `progress`
    ownFailure = std::current_exception();
    failed = true;
  }
  for (std::thread& other : others) other.join();
  if (ownFailure) std::rethrow_exception(ownFailure);
  if (failure) std::rethrow_exception(failure);
  if (progress) progress(done);
  return done == count;
}

int ThreadsFor(int asked) {
  return asked > 0 ? asked : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

}  // namespace jqhost

#include "console/interrupt.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstring>

namespace jqstitch {
namespace {

volatile std::sig_atomic_t g_signal = 0;
volatile std::sig_atomic_t g_hasFile = 0;
char g_file[PATH_MAX];

// Only async-signal-safe calls in here.
void OnSignal(int signal) {
  if (g_signal != 0) {
    if (g_hasFile != 0) unlink(g_file);
    _exit(128 + signal);
  }
  g_signal = signal;
}

void Install(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);
  // Without SA_RESTART a sleep ends early; reads of files are not interrupted.
  sigaction(signal, &action, nullptr);
}

}  // namespace

InterruptGuard::InterruptGuard() {
  g_signal = 0;
  for (int signal : {SIGINT, SIGTERM, SIGHUP}) Install(signal, OnSignal);
  Install(SIGPIPE, SIG_IGN);
}

InterruptGuard::~InterruptGuard() {
  for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) Install(signal, SIG_DFL);
}

bool StopRequested() {
  return g_signal != 0;
}

const char* StopReason() {
  switch (g_signal) {
    case 0:
      return "";
    case SIGTERM:
      return "SIGTERM";
    case SIGHUP:
      return "SIGHUP";
    default:
      return "Ctrl-C";
  }
}

void SetFileToRemoveOnExit(const char* path) {
  g_hasFile = 0;
  if (path == nullptr || std::strlen(path) >= sizeof g_file) return;
  std::strcpy(g_file, path);
  g_hasFile = 1;
}

void SleepUnlessStopped(double seconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  while (!StopRequested() && Clock::now() < end) {
    const std::chrono::duration<double, std::milli> left = end - Clock::now();
    poll(nullptr, 0, std::min(200, std::max(1, static_cast<int>(left.count()))));
  }
}

}  // namespace jqstitch

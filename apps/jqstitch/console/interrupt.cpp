#include "console/interrupt.h"

#include <unistd.h>

#include <memory>

namespace jqstitch {
namespace {

// What a signal handler may touch. The files are given before the handlers are
// installed and stay until the program ends, so a handler never sees them change.
volatile std::sig_atomic_t g_signal = 0;
std::unique_ptr<jqhost::StopToken> g_stop;
std::vector<std::string> g_temporaries;

// Only async-signal-safe calls in here.
void OnSignal(int signal) {
  if (g_signal != 0) {
    for (const std::string& path : g_temporaries) unlink(path.c_str());
    _exit(128 + signal);
  }
  g_signal = signal;
  g_stop->Request();
}

}  // namespace

InterruptGuard::InterruptGuard(const std::vector<std::string>& temporaries) {
  g_signal = 0;
  g_stop = std::make_unique<jqhost::StopToken>();
  g_temporaries = temporaries;
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    struct sigaction action {};
    action.sa_handler = kSignals[i] == SIGPIPE ? SIG_IGN : OnSignal;
    sigemptyset(&action.sa_mask);
    // Without SA_RESTART a sleep ends early; reads of files are not interrupted.
    sigaction(kSignals[i], &action, &m_before[i]);
  }
}

InterruptGuard::~InterruptGuard() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &m_before[i], nullptr);
}

const jqhost::StopToken& InterruptGuard::Token() const {
  return *g_stop;
}

const char* InterruptGuard::Reason() const {
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

}  // namespace jqstitch

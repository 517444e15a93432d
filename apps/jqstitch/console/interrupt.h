#ifndef JQSTITCH_CONSOLE_INTERRUPT_H
#define JQSTITCH_CONSOLE_INTERRUPT_H

#include <array>
#include <csignal>
#include <string>
#include <vector>

#include "host/run/stop_token.h"

namespace jqstitch {

/// While one exists, the first Ctrl-C (SIGINT), SIGTERM or SIGHUP only asks the
/// run to stop, so that what has been stitched can be saved; the second ends the
/// program at once. SIGPIPE is ignored: a closed pipe must not cost the picture.
/// Its end restores the handlers that were there before. One at a time.
class InterruptGuard {
 public:
  /// @param temporaries files that the second signal removes on its way out
  explicit InterruptGuard(const std::vector<std::string>& temporaries);
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;

  const jqhost::StopToken& Token() const;
  /// "Ctrl-C", "SIGTERM" or "SIGHUP" once a stop was requested, else "".
  const char* Reason() const;

 private:
  static constexpr std::array<int, 4> kSignals = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};
  std::array<struct sigaction, 4> m_before;
};

}  // namespace jqstitch

#endif  // JQSTITCH_CONSOLE_INTERRUPT_H

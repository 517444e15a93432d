#ifndef JQSTITCH_CONSOLE_INTERRUPT_H
#define JQSTITCH_CONSOLE_INTERRUPT_H

namespace jqstitch {

/// While one exists, the first Ctrl-C (SIGINT), SIGTERM or SIGHUP only asks the
/// run to stop, so that what has been stitched can be saved; the second ends the
/// program at once. SIGPIPE is ignored: a closed pipe must not cost the picture.
class InterruptGuard {
 public:
  InterruptGuard();
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;
};

/// Whether a signal has asked the run to stop.
bool StopRequested();

/// "Ctrl-C", "SIGTERM" or "SIGHUP" once a stop was requested, else "".
const char* StopReason();

/// The file that a second signal removes on its way out; null when there is none.
/// The text is copied; one too long for a path is ignored.
void SetFileToRemoveOnExit(const char* path);

/// Sleeps; a signal that asks for a stop ends the sleep early.
void SleepUnlessStopped(double seconds);

}  // namespace jqstitch

#endif  // JQSTITCH_CONSOLE_INTERRUPT_H

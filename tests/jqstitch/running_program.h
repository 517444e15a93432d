#ifndef JQSTITCH_TESTS_RUNNING_PROGRAM_H
#define JQSTITCH_TESTS_RUNNING_PROGRAM_H

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "jqstitch/run_program.h"

namespace jqstitch_test {

/// How a program is started, beyond its arguments.
struct StartOptions {
  std::string input;                                             ///< its standard input
  std::vector<std::pair<std::string, std::string>> environment;  ///< set on top of ours
  std::string folder;                                            ///< to start in; empty: ours
  std::int64_t largestFile = -1;  ///< bytes; writing more fails. -1: no limit
};

/// The built `jqstitch` while it runs: it can be watched and sent signals.
class RunningProgram {
 public:
  explicit RunningProgram(const std::vector<std::string>& arguments,
                          const StartOptions& options = {});
  /// Kills a program that is still running.
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  void Signal(int signal) const;
  /// Sends it again and again: signals that arrive together count as one.
  void SignalUntilItEnds(int signal);
  /// Waits until standard output holds the text `times` times; false when the
  /// program ends or a minute passes before.
  bool WaitForOutput(const std::string& text, int times);
  /// Waits for the end; a failed expectation and a kill after a minute.
  Outcome Wait();
  /// The signal that ended the program; 0 when it ended by itself.
  int EndingSignal() const { return m_endingSignal; }

 private:
  bool HasEnded();

  TemporaryFolder m_files;
  pid_t m_child = -1;
  bool m_ended = false;
  int m_status = 0;
  int m_endingSignal = 0;
};

/// Runs it to its end.
Outcome RunProgramWith(const std::vector<std::string>& arguments, const StartOptions& options);

}  // namespace jqstitch_test

#endif  // JQSTITCH_TESTS_RUNNING_PROGRAM_H

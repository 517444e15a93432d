#ifndef JQSTITCH_CONSOLE_CONSOLE_H
#define JQSTITCH_CONSOLE_CONSOLE_H

#include <nlohmann/json.hpp>
#include <string>

#include "console/progress_bar.h"

namespace jqstitch {

/// Everything a running command says. Words for people go to standard error,
/// standard output carries the events of --json and nothing else.
class Console {
 public:
  /// @param command shown before errors, for example "batch"
  Console(std::string command, bool quiet, bool json);

  /// A line for people; nothing under --quiet.
  void Say(const std::string& text);
  /// A line that --quiet does not silence, with the program's name before it.
  void Complain(const std::string& text);
  /// One line of JSON on standard output, if --json asked for it. A reader that
  /// has gone away ends the events, not the run.
  void Event(const nlohmann::json& event);

  /// Starts counting; a total of 0 means that the end is not known.
  void StartProgress(int total, const std::string& what);
  /// @param status what to know now, shown before the count; may be empty
  void Progress(int done, const std::string& status = std::string());
  void EndProgress();

 private:
  std::string m_command;
  bool m_quiet;
  bool m_json;
  ProgressBar m_progress;
};

}  // namespace jqstitch

#endif  // JQSTITCH_CONSOLE_CONSOLE_H

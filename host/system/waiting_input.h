#ifndef JQHOST_SYSTEM_WAITING_INPUT_H
#define JQHOST_SYSTEM_WAITING_INPUT_H

#include <string>
#include <system_error>

namespace jqhost {

/// Standard input or a pipe, whose writer may take its time: asked for a while instead of
/// being waited for.
class WaitingInput {
 public:
  /// @param path "-" for standard input. `Error` tells why it could not be opened.
  explicit WaitingInput(const std::string& path);
  ~WaitingInput();
  WaitingInput(const WaitingInput&) = delete;
  WaitingInput& operator=(const WaitingInput&) = delete;

  std::error_code Error() const { return m_error; }

  enum class Got { kBytes, kNothingYet, kEnd };
  /// Appends what has come; waits for it no longer than this. An input that fails has
  /// ended; `Error` tells why.
  Got Read(std::string& bytes, double seconds);

 private:
  int m_file = -1;
  bool m_isOurs = false;
  std::error_code m_error;
};

}  // namespace jqhost

#endif  // JQHOST_SYSTEM_WAITING_INPUT_H

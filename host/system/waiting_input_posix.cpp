#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "host/system/waiting_input.h"

namespace jqhost {

WaitingInput::WaitingInput(const std::string& path) {
  if (path == "-") {
    m_file = STDIN_FILENO;
    return;
  }
  // Else opening a pipe would wait for its writer.
  m_file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  m_isOurs = m_file >= 0;
  if (m_file < 0) m_error = std::error_code(errno, std::generic_category());
}

WaitingInput::~WaitingInput() {
  if (m_isOurs) close(m_file);
}

WaitingInput::Got WaitingInput::Read(std::string& bytes, double seconds) {
  pollfd wanted{m_file, POLLIN, 0};
  const int ready = poll(&wanted, 1, static_cast<int>(seconds * 1000));
  // A signal ends the wait early; the caller looks whether it asks for a stop.
  if (ready == 0 || (ready < 0 && errno == EINTR)) return Got::kNothingYet;
  std::array<char, 4096> buffer;
  const ssize_t count = ready < 0 ? -1 : read(m_file, buffer.data(), buffer.size());
  if (count > 0) {
    bytes.append(buffer.data(), static_cast<std::size_t>(count));
    return Got::kBytes;
  }
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return Got::kNothingYet;
  if (count < 0) m_error = std::error_code(errno, std::generic_category());
  return Got::kEnd;
}

}  // namespace jqhost

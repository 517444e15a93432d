#include "console/console.h"

#include <cstdio>
#include <utility>

namespace jqstitch {
namespace {

// File names may hold bytes that are not UTF-8; an event must still be JSON.
std::string Dump(const nlohmann::json& event) {
  return event.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

Console::Console(std::string command, bool quiet, bool json)
    : m_command(std::move(command)), m_quiet(quiet), m_json(json) {}

void Console::Say(const std::string& text) {
  if (m_quiet) return;
  m_progress.Hide();
  std::fprintf(stderr, "%s\n", text.c_str());
  m_progress.Show();
}

void Console::Complain(const std::string& text) {
  m_progress.Hide();
  std::fprintf(stderr, "jqstitch %s: %s\n", m_command.c_str(), text.c_str());
  m_progress.Show();
}

void Console::Event(const nlohmann::json& event) {
  if (!m_json) return;
  const std::string line = Dump(event) + "\n";
  const bool written = std::fwrite(line.data(), 1, line.size(), stdout) == line.size();
  if (!written || std::fflush(stdout) != 0) {
    m_json = false;
    Complain("standard output does not take the events any more; the run goes on without them");
  }
}

void Console::StartProgress(int total, const std::string& what) {
  if (!m_quiet) m_progress.Start(total, what);
}

void Console::Progress(int done, const std::string& status) {
  m_progress.Update(done, status);
}

void Console::EndProgress() {
  m_progress.End();
}

}  // namespace jqstitch

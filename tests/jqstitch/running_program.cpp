#include "jqstitch/running_program.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace jqstitch_test {
namespace {

constexpr auto kPatience = std::chrono::seconds(60);

// In the child, between fork and exec.
bool Prepare(const StartOptions& options, const TemporaryFolder& files) {
  for (const auto& [name, value] : options.environment) {
    if (setenv(name.c_str(), value.c_str(), 1) != 0) return false;
  }
  const bool redirected = std::freopen((files / "in").c_str(), "r", stdin) != nullptr &&
                          std::freopen((files / "out").c_str(), "w", stdout) != nullptr &&
                          std::freopen((files / "err").c_str(), "w", stderr) != nullptr;
  if (!redirected) return false;
  if (options.largestFile >= 0) {
    // Ignored, so that a write fails with an error instead of ending the program.
    std::signal(SIGXFSZ, SIG_IGN);
    const auto size = static_cast<rlim_t>(options.largestFile);
    const rlimit limit{size, size};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return false;
  }
  return options.folder.empty() || chdir(options.folder.c_str()) == 0;
}

}  // namespace

RunningProgram::RunningProgram(const std::vector<std::string>& arguments,
                               const StartOptions& options) {
  std::ofstream(m_files / "in", std::ios::binary) << options.input;
  std::ofstream(m_files / "out");
  std::ofstream(m_files / "err");
  std::string program = JQSTITCH_PROGRAM;
  std::vector<std::string> copies = arguments;
  std::vector<char*> pointers = {program.data()};
  for (std::string& argument : copies) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  // What waits to be written would be written by both.
  std::fflush(nullptr);
  m_child = fork();
  if (m_child == 0) {
    if (Prepare(options, m_files)) execv(pointers[0], pointers.data());
    _exit(127);
  }
  EXPECT_GT(m_child, 0);
}

RunningProgram::~RunningProgram() {
  if (m_ended || m_child <= 0) return;
  kill(m_child, SIGKILL);
  waitpid(m_child, &m_status, 0);
}

void RunningProgram::Signal(int signal) const {
  if (m_ended) return;
  EXPECT_EQ(kill(m_child, signal), 0);
}

void RunningProgram::SignalUntilItEnds(int signal) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!HasEnded() && std::chrono::steady_clock::now() < deadline) {
    Signal(signal);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
}

bool RunningProgram::HasEnded() {
  if (!m_ended) m_ended = waitpid(m_child, &m_status, WNOHANG) == m_child;
  return m_ended;
}

bool RunningProgram::WaitForOutput(const std::string& text, int times) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (std::chrono::steady_clock::now() < deadline) {
    const std::string out = ReadFile(m_files / "out");
    int found = 0;
    for (std::size_t at = out.find(text); at != std::string::npos; at = out.find(text, at + 1)) {
      ++found;
    }
    if (found >= times) return true;
    if (HasEnded()) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return false;
}

Outcome RunningProgram::Wait() {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!HasEnded() && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  if (!m_ended) {
    ADD_FAILURE() << "the program does not end";
    kill(m_child, SIGKILL);
    m_ended = waitpid(m_child, &m_status, 0) == m_child;
  }
  Outcome outcome;
  outcome.exitCode = WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -1;
  m_endingSignal = WIFSIGNALED(m_status) ? WTERMSIG(m_status) : 0;
  outcome.out = ReadFile(m_files / "out");
  outcome.err = ReadFile(m_files / "err");
  return outcome;
}

Outcome RunProgramWith(const std::vector<std::string>& arguments, const StartOptions& options) {
  return RunningProgram(arguments, options).Wait();
}

}  // namespace jqstitch_test

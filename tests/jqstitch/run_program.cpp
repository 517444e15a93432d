#include "jqstitch/run_program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace jqstitch_test {
namespace {

std::string Slurp(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

}  // namespace

Outcome RunProgram(const std::vector<std::string>& arguments) {
  const TemporaryFolder folder;
  const std::string out = folder / "out";
  const std::string err = folder / "err";
  std::vector<char*> pointers;
  std::string program = JQSTITCH_PROGRAM;
  pointers.push_back(program.data());
  std::vector<std::string> copies = arguments;
  for (std::string& argument : copies) pointers.push_back(argument.data());
  pointers.push_back(nullptr);

  // What waits to be written would be written by both.
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    // Files rather than pipes: no reader has to keep up.
    if (std::freopen("/dev/null", "r", stdin) != nullptr &&
        std::freopen(out.c_str(), "w", stdout) != nullptr &&
        std::freopen(err.c_str(), "w", stderr) != nullptr) {
      execv(pointers[0], pointers.data());
    }
    _exit(127);
  }
  int status = 0;
  EXPECT_GT(child, 0);
  EXPECT_EQ(waitpid(child, &status, 0), child);
  Outcome outcome;
  outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  outcome.out = Slurp(out);
  outcome.err = Slurp(err);
  return outcome;
}

TemporaryFolder::TemporaryFolder() {
  std::string path = (fs::temp_directory_path() / "jqstitch-test-XXXXXX").string();
  if (mkdtemp(path.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
  m_path = path;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(m_path, ignored);
}

std::string ReadFile(const std::string& path) {
  EXPECT_TRUE(fs::is_regular_file(path)) << path;
  return Slurp(path);
}

std::vector<std::string> ListFolder(const std::string& path) {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace jqstitch_test

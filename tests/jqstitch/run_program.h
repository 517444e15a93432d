#ifndef JQSTITCH_TESTS_RUN_PROGRAM_H
#define JQSTITCH_TESTS_RUN_PROGRAM_H

#include <string>
#include <vector>

namespace jqstitch_test {

struct Outcome {
  int exitCode = -1;  ///< -1 when a signal ended the program
  std::string out;    ///< standard output
  std::string err;    ///< standard error
};

/// Runs the built `jqstitch` with these arguments, without a shell and with empty
/// standard input, and waits for it.
Outcome RunProgram(const std::vector<std::string>& arguments);

/// A new empty folder that is removed with everything in it at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string Path() const { return m_path; }
  std::string operator/(const std::string& name) const { return m_path + "/" + name; }

 private:
  std::string m_path;
};

/// All bytes of a file; a failed expectation and "" when it cannot be read.
std::string ReadFile(const std::string& path);

/// The names in a folder, sorted.
std::vector<std::string> ListFolder(const std::string& path);

}  // namespace jqstitch_test

#endif  // JQSTITCH_TESTS_RUN_PROGRAM_H

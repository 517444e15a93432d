// The program as a whole: version, help and wrong usage.
#include <gtest/gtest.h>

#include "jqstitch/run_program.h"

namespace jqstitch_test {
namespace {

using Strings = std::vector<std::string>;

TEST(JqstitchProgram, VersionAndHelpAreOnStandardOutput) {
  const Outcome version = RunProgram({"--version"});
  EXPECT_EQ(version.exitCode, 0);
  EXPECT_EQ(version.out.rfind("jqstitch ", 0), 0u);
  EXPECT_EQ(version.err, "");
  const Outcome help = RunProgram({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  for (const char* text : {"batch", "live", "simulate", "inspect", "Examples:", "Exit codes:"}) {
    EXPECT_NE(help.out.find(text), std::string::npos) << text;
  }
}

TEST(JqstitchProgram, WrongUsagePointsToTheCommandsOwnHelp) {
  const struct {
    Strings arguments;
    const char* hint;
  } rows[] = {{{"live"}, "Try 'jqstitch live --help'"},
              {{"live", "x", "-o", "y.png", "--nonsense"}, "Try 'jqstitch live --help'"},
              {{"batch", "-o", "x.png"}, "Try 'jqstitch batch --help'"},
              {{"simulate", "-o", "x", "--step", "many"}, "Try 'jqstitch simulate --help'"},
              {{"inspect", "a.png"}, "Try 'jqstitch inspect --help'"},
              {{"--nonsense"}, "Try 'jqstitch --help'"}};
  for (const auto& row : rows) {
    const Outcome outcome = RunProgram(row.arguments);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_NE(outcome.err.find(row.hint), std::string::npos) << outcome.err;
  }
}

TEST(JqstitchProgram, AWrongCommandListsTheRightOnes) {
  for (const Strings& arguments : {Strings{"stich", "x.png", "-o", "y.png"}, Strings{}}) {
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_NE(outcome.err.find("commands are batch, assemble, live, simulate, inspect"),
              std::string::npos)
        << outcome.err;
  }
}

TEST(JqstitchProgram, WrongUsageIsTold) {
  for (const Strings& arguments : {Strings{}, Strings{"nonsense"}, Strings{"live"},
                                   Strings{"batch", "-o", "x.png"}, Strings{"live", "folder"}}) {
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_NE(outcome.err.find("--help"), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.out, "");
  }
}

}  // namespace
}  // namespace jqstitch_test

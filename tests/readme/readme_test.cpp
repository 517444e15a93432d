// What the documents say is there, and does what they say.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>
#include <regex>
#include <sstream>

#include "jqstitch/run_program.h"

namespace {

namespace fs = std::filesystem;
using jqstitch_test::Outcome;
using jqstitch_test::ReadFile;
using jqstitch_test::RunProgram;
using jqstitch_test::TemporaryFolder;

const std::string kRoot = JQ_SOURCE_DIR;

std::vector<fs::path> Documents() {
  std::vector<fs::path> documents;
  for (const char* folder : {"", "/docs"}) {
    for (const fs::directory_entry& entry : fs::directory_iterator(kRoot + folder)) {
      if (entry.path().extension() == ".md") documents.push_back(entry.path());
    }
  }
  return documents;
}

// The contents of the fenced blocks of one language.
std::vector<std::string> Blocks(const std::string& text, const std::string& language) {
  std::vector<std::string> blocks;
  const std::string opening = "```" + language + "\n";
  std::size_t at = 0;
  while ((at = text.find(opening, at)) != std::string::npos) {
    const std::size_t begin = at + opening.size();
    const std::size_t end = text.find("```", begin);
    blocks.push_back(text.substr(begin, end - begin));
    at = end;
  }
  return blocks;
}

// The text without its fenced blocks.
std::string Prose(const std::string& text) {
  std::string prose;
  std::istringstream lines(text);
  std::string line;
  bool fenced = false;
  while (std::getline(lines, line)) {
    if (line.rfind("```", 0) == 0) {
      fenced = !fenced;
    } else if (!fenced) {
      prose += line + "\n";
    }
  }
  return prose;
}

std::string WithoutSpaces(std::string text) {
  text.erase(std::remove_if(text.begin(), text.end(),
                            [](unsigned char c) { return std::isspace(c) != 0; }),
             text.end());
  return text;
}

TEST(Readme, ShowsTheExampleHostAsItIsCompiled) {
  const std::vector<std::string> blocks = Blocks(ReadFile(kRoot + "/README.md"), "cpp");
  ASSERT_EQ(blocks.size(), 1U);
  const std::string host = ReadFile(kRoot + "/examples/host/main.cpp");
  EXPECT_EQ(blocks[0], host);
  EXPECT_LE(std::count(host.begin(), host.end(), '\n'), 34);
}

TEST(Hosting, ShowsCodeThatIsCompiled) {
  const std::string compiled =
      WithoutSpaces(ReadFile(kRoot + "/tests/readme/hosting_snippets.cpp"));
  const std::vector<std::string> blocks = Blocks(ReadFile(kRoot + "/docs/hosting.md"), "cpp");
  EXPECT_GE(blocks.size(), 2U);
  for (const std::string& block : blocks) {
    EXPECT_NE(compiled.find(WithoutSpaces(block)), std::string::npos) << block;
  }
}

TEST(Readme, MapsTheFoldersThatExist) {
  const std::string text = ReadFile(kRoot + "/README.md");
  std::vector<std::string> mapped;
  const std::regex row("\\| `([a-z]+)/` \\|");
  for (std::sregex_iterator it(text.begin(), text.end(), row), end; it != end; ++it) {
    mapped.push_back((*it)[1]);
    EXPECT_TRUE(fs::is_directory(kRoot + "/" + mapped.back())) << mapped.back();
  }
  for (const fs::directory_entry& entry : fs::directory_iterator(kRoot)) {
    const std::string name = entry.path().filename().string();
    // Hidden folders, and what .gitignore keeps out.
    if (!entry.is_directory() || name[0] == '.' || name.rfind("build", 0) == 0 || name == "out") {
      continue;
    }
    EXPECT_NE(std::find(mapped.begin(), mapped.end(), name), mapped.end()) << name;
  }
}

TEST(Documents, LinkToFilesThatExist) {
  const std::regex link("\\]\\(([^)#]+)[^)]*\\)");
  int links = 0;
  for (const fs::path& document : Documents()) {
    const std::string text = Prose(ReadFile(document.string()));
    for (std::sregex_iterator it(text.begin(), text.end(), link), end; it != end; ++it) {
      const std::string target = (*it)[1];
      if (target.rfind("http", 0) == 0) continue;
      EXPECT_TRUE(fs::exists(document.parent_path() / target)) << document << " -> " << target;
      ++links;
    }
  }
  EXPECT_GT(links, 8);
}

TEST(Documents, NameFilesThatExist) {
  // Paths in back quotes with a folder of ours in front.
  const std::regex path(
      "`((?:include|src|platform|apps|examples|tests|bench|docs|scripts|cmake|\\.ci)/[A-Za-z0-9_./"
      "]*)`");
  int paths = 0;
  for (const fs::path& document : Documents()) {
    const std::string text = ReadFile(document.string());
    for (std::sregex_iterator it(text.begin(), text.end(), path), end; it != end; ++it) {
      EXPECT_TRUE(fs::exists(kRoot + "/" + (*it)[1].str())) << document << ": " << (*it)[1];
      ++paths;
    }
  }
  EXPECT_GT(paths, 20);
}

TEST(Readme, ItsTwoCommandsCanBeRun) {
  int commands = 0;
  for (const std::string& block : Blocks(ReadFile(kRoot + "/README.md"), "sh")) {
    std::istringstream lines(block);
    std::string command;
    while (std::getline(lines, command)) {
      if (command.rfind("scripts/", 0) != 0) continue;
      const fs::path script = kRoot + "/" + command.substr(0, command.find(' '));
      ASSERT_TRUE(fs::exists(script)) << script;
      EXPECT_NE(fs::status(script).permissions() & fs::perms::owner_exec, fs::perms::none);
      ++commands;
    }
  }
  EXPECT_EQ(commands, 2);
}

// Runs the examples that need neither a video nor a camera, in the order in which
// the README has them.
TEST(Readme, ItsExamplesOfTheCommandLineWork) {
  const TemporaryFolder folder;
  const fs::path before = fs::current_path();
  fs::current_path(folder.Path());
  int commands = 0;
  for (const std::string& block : Blocks(ReadFile(kRoot + "/README.md"), "sh")) {
    std::istringstream lines(block);
    std::string line;
    while (std::getline(lines, line)) {
      std::istringstream words(line);
      std::string word;
      words >> word;
      std::vector<std::string> arguments;
      while (word == "jqstitch" && words >> word) {
        arguments.push_back(word);
        word = "jqstitch";
      }
      if (arguments.empty() || (arguments[0] == "live" && arguments[1] != "pass")) continue;
      const Outcome outcome = RunProgram(arguments);
      EXPECT_EQ(outcome.exitCode, 0) << line << "\n" << outcome.err;
      ++commands;
    }
  }
  fs::current_path(before);
  EXPECT_EQ(commands, 12);
  for (const char* name : {"live.png", "batch.png", "assembled.png", "pair.png", "mosaic.ome.tif",
                           "mosaic.png", "mask.png"}) {
    EXPECT_FALSE(cv::imread(folder / name).empty()) << name;
  }
  EXPECT_TRUE(fs::exists(folder / "live.html"));
}

TEST(ExampleHost, StitchesASimulatedPass) {
  const TemporaryFolder folder;
  const Outcome pass = RunProgram({"simulate", "-o", folder / "pass", "--size", "640x480", "--path",
                                   "row", "--count", "4", "--step", "25", "-q"});
  ASSERT_EQ(pass.exitCode, 0) << pass.err;
  const std::string command =
      "cd '" + folder.Path() + "' && '" JQ_EXAMPLE_HOST +
      "' missing.png pass/frame_0001.png odd.png pass/frame_000[234].png > said.txt 2> errors.txt";
  cv::imwrite(folder / "odd.png", cv::Mat(100, 100, CV_8UC3, cv::Scalar::all(50)));
  ASSERT_EQ(std::system(command.c_str()), 0);
  EXPECT_EQ(ReadFile(folder / "said.txt"),
            "missing.png: no frame of this run\npass/frame_0001.png: placed\n"
            "odd.png: no frame of this run\npass/frame_0002.png: placed\n"
            "pass/frame_0003.png: placed\npass/frame_0004.png: placed\n");
  const cv::Mat mosaic = cv::imread(folder / "mosaic.png");
  // Three steps of 160 pixels, each measured to within 4.
  EXPECT_NEAR(mosaic.cols, 640 + 3 * 160, 12);
  EXPECT_NEAR(mosaic.rows, 480, 12);
}

}  // namespace

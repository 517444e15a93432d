// Ctrl-C saves what has been stitched, a second one ends at once, and a killed run
// leaves no broken file under the output's name.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <opencv2/imgcodecs.hpp>
#include <random>
#include <thread>

#include "jqstitch/run_program.h"
#include "jqstitch/running_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Strings = std::vector<std::string>;

struct Stop {
  int signal;
  const char* name;
};

class Signals : public testing::TestWithParam<std::tuple<const char*, Stop>> {};

INSTANTIATE_TEST_SUITE_P(Jqstitch, Signals,
                         testing::Combine(testing::Values("live", "batch"),
                                          testing::Values(Stop{SIGINT, "Ctrl-C"},
                                                          Stop{SIGTERM, "SIGTERM"})),
                         [](const auto& parameters) {
                           return std::string(std::get<0>(parameters.param)) + "_" +
                                  std::to_string(std::get<1>(parameters.param).signal);
                         });

TEST_P(Signals, TheFirstSavesWhatHasBeenStitched) {
  const auto [command, stop] = GetParam();
  const TemporaryFolder in, out;
  constexpr int kFrames = 40;
  WriteWalk(in.Path(), kFrames, {80, 0}, {640, 480});
  RunningProgram program(
      {command, in.Path(), "-o", out / "mosaic.png", "--report", out / "report.json", "--json"});
  ASSERT_TRUE(program.WaitForOutput("\"placed\":true", 3));
  program.Signal(stop.signal);
  const Outcome outcome = program.Wait();
  EXPECT_EQ(program.EndingSignal(), 0);
  EXPECT_EQ(outcome.exitCode, 3) << outcome.err;
  EXPECT_NE(outcome.err.find(std::string("Stopped by ") + stop.name), std::string::npos)
      << outcome.err;

  const json report = ReadJson(out / "report.json");
  EXPECT_EQ(report["stoppedBy"], stop.name);
  const int placed = report["placed"];
  ASSERT_GE(placed, 3);
  ASSERT_LT(placed, kFrames) << "the signal came too late to test anything";
  ASSERT_EQ(report["list"].size(), std::size_t(kFrames)) << "every file has a verdict";
  EXPECT_EQ(report["list"][kFrames - 1]["verdict"], "not reached");
  EXPECT_EQ(EventsOf(outcome.out, "frame").size(), std::size_t(kFrames));
  const cv::Mat picture = ReadPictureFile(out / "mosaic.png");
  EXPECT_NEAR(picture.cols, 640 + 80 * (placed - 1), 2 * placed);
  EXPECT_EQ(picture.rows, int(report["picture"]["size"]["height"]));
  EXPECT_TRUE(TemporaryFilesIn(out.Path()).empty());
}

TEST_P(Signals, TheSecondEndsAtOnce) {
  const auto [command, stop] = GetParam();
  const TemporaryFolder in, out;
  // One step of these takes far longer than the pause between the signals.
  WriteWalk(in.Path(), 3, {500, 0}, {2400, 1800});
  RunningProgram program({command, in.Path(), "-o", out / "mosaic.png", "--json"});
  ASSERT_TRUE(program.WaitForOutput("\"placed\":true", 1));
  program.SignalUntilItEnds(stop.signal);
  EXPECT_EQ(program.Wait().exitCode, 128 + stop.signal);
  EXPECT_TRUE(ListFolder(out.Path()).empty());
}

// The list comes through a pipe, so that the run is surely still being prepared when the
// signal comes.
TEST(JqstitchSignals, BeforeABatchBeginsThereIsNoPicture) {
  const TemporaryFolder in, out;
  const Strings files = WriteWalk(in.Path(), 3, {64, 0});
  const std::string pipe = in / "names";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  RunningProgram program({"batch", "--list", pipe, "-o", out / "mosaic.png", "--report",
                          out / "report.json", "--json"});
  // Waits until the program reads; the second stream keeps the pipe from breaking.
  std::ofstream names(pipe);
  std::fstream keeper(pipe);
  program.Signal(SIGINT);
  for (const std::string& file : files) names << file << std::endl;
  names.close();
  keeper.close();
  const Outcome outcome = program.Wait();
  EXPECT_NE(outcome.err.find("Stopped by Ctrl-C before anything was stitched"), std::string::npos)
      << outcome.err;
  EXPECT_FALSE(fs::exists(out / "mosaic.png"));
  const json report = ReadJson(out / "report.json");
  EXPECT_EQ(report["stoppedBy"], "Ctrl-C");
  ASSERT_EQ(report["list"].size(), 3u);
  for (const json& frame : report["list"]) EXPECT_EQ(frame["verdict"], "not reached");
}

TEST(JqstitchSignals, APauseOfTheReplayEndsAtOnce) {
  const TemporaryFolder in, out;
  WriteWalk(in.Path(), 3, {96, 0});
  RunningProgram program({"live", in.Path(), "-o", out / "mosaic.png", "--fps", "0.01", "--json"});
  ASSERT_TRUE(program.WaitForOutput("\"placed\":true", 1));
  const auto start = std::chrono::steady_clock::now();
  program.Signal(SIGINT);
  EXPECT_EQ(program.Wait().exitCode, 3);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_EQ(ReadPictureFile(out / "mosaic.png").cols, 320);
}

TEST(JqstitchSignals, AClosedPipeDoesNotCostThePicture) {
  const TemporaryFolder in, out;
  WriteWalk(in.Path(), 6, {64, 0});
  const std::string command = std::string("'") + JQSTITCH_PROGRAM + "' live '" + in.Path() +
                              "' -o '" + (out / "mosaic.png") + "' --json 2>/dev/null | true";
  ASSERT_EQ(std::system(command.c_str()), 0);
  // The shell waits for the whole pipeline.
  EXPECT_NEAR(ReadPictureFile(out / "mosaic.png").cols, 320 + 5 * 64, 12);
}

TEST(JqstitchSignals, AKilledRunLeavesNoBrokenFile) {
  const TemporaryFolder in, out;
  WriteWalk(in.Path(), 12, {200, 0}, {1200, 900});
  const std::string picture = out / "mosaic.bmp";
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  int leftovers = 0;
  for (int run = 0; run < 6; ++run) {
    fs::remove(picture);
    RunningProgram program({"live", in.Path(), "-o", picture, "--save-every", "0.1", "--json"});
    ASSERT_TRUE(program.WaitForOutput("\"event\":\"picture\"", 1));
    std::this_thread::sleep_for(std::chrono::milliseconds(random() % 900));
    program.Signal(SIGKILL);
    program.Wait();
    // Saved once and being replaced all the time; its header tells the size of the
    // whole file.
    const std::string bytes = ReadFile(picture);
    ASSERT_GT(bytes.size(), 54u);
    std::uint32_t size = 0;
    std::copy_n(bytes.data() + 2, 4, reinterpret_cast<char*>(&size));
    EXPECT_EQ(size, bytes.size());
    EXPECT_EQ(ReadPictureFile(picture).rows, 900);
    for (const std::string& name : ListFolder(out.Path())) {
      if (name == "mosaic.bmp") continue;
      EXPECT_EQ(name.rfind(".jqstitch-", 0), 0u) << name;
      EXPECT_NE(name.find(".tmp.bmp"), std::string::npos) << name;
      ++leftovers;
    }
  }
  RecordProperty("leftovers", leftovers);
}

}  // namespace
}  // namespace jqstitch_test

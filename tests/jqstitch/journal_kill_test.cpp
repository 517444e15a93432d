// A recorded run that is killed at random moments. JQ_TEST_ROUNDS=100 makes a table of a
// hundred kills; JQ_TEST_SEED repeats one.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <thread>

#include "jqstitch/run_program.h"
#include "jqstitch/running_program.h"
#include "jqstitch/scene_frames.h"
#include "support/random_source.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Clock = std::chrono::steady_clock;
using Strings = std::vector<std::string>;

double Seconds(Clock::time_point since) {
  return std::chrono::duration<double>(Clock::now() - since).count();
}

class JournalKill : public testing::Test {
 protected:
  // There and back again: the mosaic grows on all sides, and some frames are only tracked.
  void SetUp() override {
    std::vector<cv::Point> corners;
    cv::Point corner(500, 600);
    const std::vector<cv::Point> legs = {{40, -30}, {-44, -26}, {-40, 34}, {12, 8}, {42, 30}};
    for (const cv::Point& leg : legs) {
      for (int i = 0; i < 8; ++i) corners.push_back(corner += leg);
    }
    m_frames = WriteFrames(m_pass.Path(), corners);
    const auto start = Clock::now();
    const Outcome outcome = RunProgram(Live("whole", {"--journal", m_work / "whole.journal"}));
    m_seconds = Seconds(start);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
  }

  // The whole mosaic, with its black.
  Strings Live(const std::string& name, const Strings& more) const {
    Strings arguments = {"live", m_pass.Path(), "-o", Picture(name), "--no-trim"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  }
  std::string Picture(const std::string& name) const { return m_work / (name + ".png"); }

  // The mosaic of an uninterrupted run that takes so many frames, by a run without a journal.
  const cv::Mat& Expected(int frames) {
    cv::Mat& expected = m_expected[frames];
    if (!expected.empty()) return expected;
    RunProgram(Live("cut", {"--max-frames", std::to_string(frames)}));
    return expected = ReadPictureFile(Picture("cut"));
  }

  bool Is(const std::string& name, const cv::Mat& expected) const {
    const cv::Mat picture = ReadPictureFile(Picture(name));
    return picture.size() == expected.size() && cv::norm(picture, expected, cv::NORM_INF) == 0;
  }

  TemporaryFolder m_pass, m_work;
  Strings m_frames;
  double m_seconds = 0;  // of the whole run
  std::map<int, cv::Mat> m_expected;
};

TEST_F(JournalKill, EveryKilledRunIsTakenUpWhereItWas) {
  const std::uint64_t seed = TestSeed();
  const int kills = TestRounds(4);
  std::printf("first seed %llu, %d kills within %.2f s\n", static_cast<unsigned long long>(seed),
              kills, m_seconds);
  for (int k = 0; k < kills; ++k) {
    const std::uint64_t round = seed + static_cast<std::uint64_t>(k);
    SCOPED_TRACE("JQ_TEST_SEED=" + std::to_string(round) + " JQ_TEST_ROUNDS=1");
    RandomSource random(round);
    const int milliseconds = random.Int(0, static_cast<int>(m_seconds * 1000));
    const std::string journal = m_work / "killed.journal";
    fs::remove_all(journal);
    {
      RunningProgram program(Live("killed", {"--journal", journal, "-q"}));
      std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
      program.Signal(SIGKILL);
      program.Wait();
    }
    const Outcome again =
        RunProgram({"resume", journal, "-o", Picture("again"), "--no-trim", "--json"});
    const std::vector<json> resumed = EventsOf(again.out, "resumed");
    if (resumed.empty()) {
      // Nothing was recorded yet, which is said.
      EXPECT_EQ(again.exitCode, 1);
      EXPECT_NE(again.err.find("journal"), std::string::npos) << again.err;
      std::printf("%3d: %4d ms, nothing recorded\n", k + 1, milliseconds);
      continue;
    }
    const int recorded = resumed[0]["frames"];
    const std::string last = resumed[0]["lastFrame"];
    const auto found = std::find(m_frames.begin(), m_frames.end(), last);
    ASSERT_NE(found, m_frames.end());
    const int taken = static_cast<int>(found - m_frames.begin()) + 1;
    const bool same = Is("again", Expected(taken));
    EXPECT_TRUE(same);
    EXPECT_EQ(RunProgram({"verify", journal}).exitCode, 0);
    // And with the frames that were still to come it is the run that was not killed.
    const Outcome on =
        RunProgram({"resume", journal, m_pass.Path(), "-o", Picture("on"), "--no-trim"});
    EXPECT_EQ(on.exitCode, 0) << on.err;
    const bool whole = Is("on", Expected(static_cast<int>(m_frames.size())));
    EXPECT_TRUE(whole);
    std::printf("%3d: %4d ms, %2d recorded, the last is frame %2d: %s; gone on: %s; torn: %zu\n",
                k + 1, milliseconds, recorded, taken, same ? "equal" : "DIFFERENT",
                whole ? "equal" : "DIFFERENT", resumed[0]["torn"].size());
  }
}

}  // namespace
}  // namespace jqstitch_test

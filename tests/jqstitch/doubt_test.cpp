// Placements that cannot be trusted: told in the summary, the reports and the exit code.
#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

using nlohmann::json;

constexpr int kPeriod = 48;  // pixels

// Tiles that are all alike but for specks, by which the stitcher finds its way.
cv::Mat Tiles(cv::Size size) {
  cv::Mat tile(kPeriod, kPeriod, CV_8UC3, cv::Scalar(60, 80, 70));
  cv::circle(tile, cv::Point(24, 24), 15, cv::Scalar(200, 220, 210), cv::FILLED, cv::LINE_AA);
  cv::Mat scene = cv::repeat(tile, size.height / kPeriod + 1, size.width / kPeriod + 1);
  cv::RNG random(4);
  for (int i = 0; i < size.area() / 700; ++i) {
    const int x = random.uniform(0, size.width), y = random.uniform(0, size.height);
    cv::circle(scene, cv::Point(x, y), 1, cv::Scalar::all(random.uniform(10, 250)), cv::FILLED);
  }
  return scene(cv::Rect(cv::Point(), size)).clone();
}

class Doubt : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(cv::imwrite(m_folder / "tiles.png", Tiles({1400, 800})));
    // Two tiles a step, so that the live overlap test sees what it saw before.
    const Outcome simulated =
        RunProgram({"simulate", "-o", m_folder / "pass", "--image", m_folder / "tiles.png",
                    "--size", "400x300", "--count", "4", "--path", "row", "--step", "24"});
    ASSERT_EQ(simulated.exitCode, 0) << simulated.err;
  }

  TemporaryFolder m_folder;
};

TEST_F(Doubt, ARepeatingSceneIsToldEverywhere) {
  for (const char* command : {"live", "batch"}) {
    SCOPED_TRACE(command);
    const Outcome outcome =
        RunProgram({command, m_folder / "pass", "-o", m_folder / "mosaic.png", "--report",
                    m_folder / "report.json", "--report", m_folder / "report.html"});
    EXPECT_EQ(outcome.exitCode, 3) << outcome.err;
    const json report = ReadJson(m_folder / "report.json");
    EXPECT_EQ(report["outcome"], "some doubtful");
    const json& list = report["list"];
    ASSERT_EQ(list.size(), 4u);
    ASSERT_EQ(report["doubtful"], 3) << outcome.err;
    EXPECT_EQ(list[0]["doubtful"], false);
    EXPECT_EQ(list[0]["confidence"], 1.0);
    for (std::size_t i = 1; i < list.size(); ++i) {
      EXPECT_EQ(list[i]["placed"], true);
      EXPECT_EQ(list[i]["doubtful"], true);
      EXPECT_LT(list[i]["confidence"], 0.5);
      EXPECT_EQ(list[i]["doubt"]["reason"], "repeats");
      EXPECT_NEAR(std::hypot(list[i]["doubt"]["period"]["x"].get<double>(),
                             list[i]["doubt"]["period"]["y"].get<double>()),
                  kPeriod, 1.0);
    }
    EXPECT_NE(outcome.err.find("doubtful: the scene repeats itself every 48 pixels"),
              std::string::npos)
        << outcome.err;
    // The last line says it.
    const std::size_t last = outcome.err.rfind('\n', outcome.err.size() - 2);
    EXPECT_EQ(outcome.err.substr(last + 1).rfind("Doubtful: 3 of 4 placed frames", 0), 0u)
        << outcome.err;
    EXPECT_NE(ReadFile(m_folder / "report.html").find("<tr class=\"doubt\">"), std::string::npos);
  }
}

TEST_F(Doubt, EventsTellItWithTheFrame) {
  const Outcome outcome =
      RunProgram({"live", m_folder / "pass", "-o", m_folder / "mosaic.png", "--json"});
  const std::vector<json> frames = EventsOf(outcome.out, "frame");
  ASSERT_EQ(frames.size(), 4u);
  EXPECT_EQ(frames[1]["doubtful"], true);
  EXPECT_EQ(EventsOf(outcome.out, "summary").at(0)["doubtful"], 3);
}

// Every frame but the first is taken back, and each is measured against the first again.
TEST_F(Doubt, DroppedPlacementsAreTakenBackAndTold) {
  const Outcome outcome =
      RunProgram({"live", m_folder / "pass", "-o", m_folder / "mosaic.png", "--doubtful", "drop",
                  "--json", "--journal", m_folder / "journal"});
  const std::vector<json> frames = EventsOf(outcome.out, "frame");
  ASSERT_EQ(frames.size(), 4u);
  EXPECT_EQ(frames[0]["placed"], true);
  EXPECT_EQ(frames[1]["placed"], false);
  EXPECT_EQ(frames[1]["verdict"], "taken back");
  EXPECT_EQ(frames[1]["state"], "lost");
  EXPECT_EQ(frames[1]["doubt"]["reason"], "repeats");
  EXPECT_FALSE(frames[1].contains("position"));
  // Two tiles from the frame before, and four from the first one.
  EXPECT_EQ(frames[1]["offset"]["x"].get<int>() % kPeriod, 0);
  EXPECT_EQ(frames[2]["offset"]["x"].get<int>() % kPeriod, 0);
  const json summary = EventsOf(outcome.out, "summary").at(0);
  EXPECT_GE(summary["takenBack"], 1);
  EXPECT_EQ(summary["doubtful"], 0);
  EXPECT_EQ(summary["placed"], 1);
  EXPECT_EQ(outcome.exitCode, 4) << outcome.err;
  EXPECT_NE(outcome.err.find("taken back, doubtful: the scene repeats itself every 48 pixels"),
            std::string::npos)
      << outcome.err;
  EXPECT_NE(outcome.err.find("Taken back: "), std::string::npos) << outcome.err;
  // The picture is the first frame, and so is the journal.
  const cv::Mat picture = ReadPictureFile(m_folder / "mosaic.png");
  EXPECT_EQ(picture.size(), cv::Size(400, 300));
  EXPECT_EQ(RunProgram({"verify", m_folder / "journal"}).exitCode, 0);
  EXPECT_EQ(RunProgram(
                {"live", m_folder / "pass", "-o", m_folder / "mosaic.png", "--doubtful", "perhaps"})
                .exitCode,
            2);
}

// The shifts are measured at the working scale and the comparison works at full size.
TEST_F(Doubt, TheScaleOfTheRunDoesNotMatter) {
  const Outcome walk = RunProgram({"simulate", "-o", m_folder / "walk", "--size", "800x600",
                                   "--count", "4", "--path", "row", "--step", "30"});
  ASSERT_EQ(walk.exitCode, 0) << walk.err;
  for (const char* level : {"1", "2"}) {
    const Outcome outcome =
        RunProgram({"live", m_folder / "walk", "-o", m_folder / "mosaic.png", "--detect-level",
                    level, "--report", m_folder / "report.json"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    for (const json& frame : ReadJson(m_folder / "report.json")["list"]) {
      EXPECT_EQ(frame["doubtful"], false) << level;
      EXPECT_GT(frame["confidence"], 0.9) << level;
    }
  }
}

}  // namespace
}  // namespace jqstitch_test

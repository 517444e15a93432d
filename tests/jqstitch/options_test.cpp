// Every option of batch and live that the other tests do not turn on.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <opencv2/imgcodecs.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/running_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Strings = std::vector<std::string>;

const cv::Size kFrame(320, 240);

class Options : public testing::TestWithParam<const char*> {
 protected:
  // A walk with a corner, so that the picture has empty parts.
  void SetUp() override {
    m_corners = {{0, 0}, {64, 0}, {128, 0}, {128, 48}, {128, 96}};
    m_frames = WriteFrames(m_in.Path(), m_corners, kFrame);
  }

  Outcome Run(const Strings& options) {
    Strings arguments = {GetParam(), m_in.Path(), "-o", m_out / "mosaic.png"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunProgram(arguments);
  }

  cv::Mat Picture() { return ReadPictureFile(m_out / "mosaic.png"); }

  TemporaryFolder m_in, m_out;
  std::vector<cv::Point> m_corners;
  Strings m_frames;
};

class LiveOptions : public Options {};

INSTANTIATE_TEST_SUITE_P(Jqstitch, Options, testing::Values("live", "batch"),
                         [](const auto& parameters) { return std::string(parameters.param); });
INSTANTIATE_TEST_SUITE_P(Jqstitch, LiveOptions, testing::Values("live"));

TEST_P(Options, NoTrimKeepsTheBorder) {
  ASSERT_EQ(Run({}).exitCode, 0);
  const cv::Mat trimmed = Picture();
  ASSERT_EQ(Run({"--trim"}).exitCode, 0);
  EXPECT_EQ(cv::norm(trimmed, Picture(), cv::NORM_INF), 0) << "--trim is the default";
  ASSERT_EQ(Run({"--no-trim", "--report", m_out / "r.json"}).exitCode, 0);
  const cv::Mat whole = Picture();
  // The mosaic starts as twice the frame and grows by whole frames.
  EXPECT_GE(whole.cols, 2 * kFrame.width);
  EXPECT_EQ(whole.cols % kFrame.width, 0);
  EXPECT_EQ(whole.rows % kFrame.height, 0);
  const json first = ReadJson(m_out / "r.json")["list"][0]["corner"];
  const cv::Rect area(cv::Point(first["x"], first["y"]), trimmed.size());
  EXPECT_EQ(cv::norm(trimmed, whole(area), cv::NORM_INF), 0);
}

TEST_P(Options, BackgroundColoursWhatNoFrameCovers) {
  ASSERT_EQ(Run({}).exitCode, 0);
  const cv::Mat black = Picture();
  ASSERT_EQ(Run({"--background", "10,200,30"}).exitCode, 0);
  const cv::Mat coloured = Picture();
  int empty = 0;
  for (int y = 0; y < black.rows; ++y) {
    for (int x = 0; x < black.cols; ++x) {
      const auto before = black.at<cv::Vec3b>(y, x);
      const bool isEmpty = before == cv::Vec3b(0, 0, 0);
      empty += isEmpty ? 1 : 0;
      // Red, green, blue on the command line; the other way round in the matrix.
      ASSERT_EQ(coloured.at<cv::Vec3b>(y, x), isEmpty ? cv::Vec3b(30, 200, 10) : before);
    }
  }
  EXPECT_GT(empty, 1000);
}

TEST_P(Options, WrongValuesAreWrongUsage) {
  const Strings wrong[] = {{"--background", "1,2"},
                           {"--background", "1,2,256"},
                           {"--background", "red"},
                           {"--background", "1,2,3,4"},
                           {"--report", m_out / "r.t"},
                           {"--threads", "0"},
                           {"--threads", "two"},
                           {"--nonsense"},
                           {"--truth"}};
  for (const Strings& options : wrong) {
    const Outcome outcome = Run(options);
    EXPECT_EQ(outcome.exitCode, 2) << options[0];
    EXPECT_NE(outcome.err.find(options[0]), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.out, "");
  }
  EXPECT_FALSE(fs::exists(m_out / "mosaic.png"));
}

TEST_P(Options, JsonTellsEveryStepAndNothingElseOnStandardOutput) {
  EXPECT_EQ(Run({}).out, "");
  const Outcome outcome = Run({"--json"});
  EXPECT_EQ(outcome.exitCode, 0);
  const std::vector<json> events = Events(outcome.out);
  ASSERT_EQ(events.size(), 1 + m_frames.size() + 2);
  EXPECT_EQ(events.front()["event"], "start");
  EXPECT_EQ(events.front()["total"], m_frames.size());
  for (std::size_t i = 0; i < m_frames.size(); ++i) {
    const json& frame = events[i + 1];
    EXPECT_EQ(frame["event"], "frame");
    EXPECT_EQ(frame["name"], m_frames[i]);
    EXPECT_EQ(frame["number"], i + 1);
    EXPECT_NEAR(int(frame["position"]["x"]), m_corners[i].x, 4);
    EXPECT_NEAR(int(frame["position"]["y"]), m_corners[i].y, 4);
    if (i > 0) {
      EXPECT_GE(int(frame["matches"]), 11);
    }
  }
  EXPECT_EQ(events[events.size() - 2]["event"], "picture");
  EXPECT_EQ(events.back()["event"], "summary");
  EXPECT_EQ(events.back()["exitCode"], 0);
  EXPECT_EQ(events.back()["outcome"], "all placed");
}

TEST_P(Options, QuietSaysNothing) {
  const Outcome outcome = Run({"--quiet"});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, "");
}

TEST_P(Options, TruthTellsTheErrors) {
  std::ofstream truth(m_in / "truth.csv");
  truth << "file,x,y\n";
  for (std::size_t i = 0; i < m_frames.size(); ++i) {
    // Frame 4 is said to lie 30 to the left and 40 above its place.
    const cv::Point shift = i == 3 ? cv::Point(-30, -40) : cv::Point(0, 0);
    const cv::Point corner = m_corners[i] + shift + cv::Point(1000, 2000);
    truth << "f" << i + 1 << ".png," << corner.x << "," << corner.y << "\n";
  }
  truth.close();
  const Outcome outcome = Run({"--truth", m_in / "truth.csv", "--report", m_out / "r.json"});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_NE(outcome.err.find("Position error in pixels"), std::string::npos) << outcome.err;
  const json report = ReadJson(m_out / "r.json");
  EXPECT_EQ(report["truth"]["compared"], 5);
  EXPECT_NEAR(report["truth"]["neighbour"]["maximum"], 50.0, 3.0);
  EXPECT_NEAR(report["truth"]["absolute"]["maximum"], 50.0, 3.0);
  EXPECT_NEAR(report["truth"]["neighbour"]["median"], 25.0, 3.0) << "of 0, 0, 50 and 50";
  EXPECT_LT(report["truth"]["absolute"]["median"], 4.0);
  EXPECT_FALSE(report["list"][0].contains("neighbourError"));
  EXPECT_LT(report["list"][1]["neighbourError"], 3.0);
  EXPECT_NEAR(report["list"][3]["neighbourError"], 50.0, 3.0);
  EXPECT_NEAR(report["list"][4]["neighbourError"], 50.0, 3.0);
  EXPECT_LT(report["list"][4]["absoluteError"], 4.0);
}

TEST_P(Options, AWrongTruthIsRefusedWithItsLine) {
  std::ofstream(m_in / "truth.csv") << "file,x,y\nf1.png,1,2\nf2.png,1\n";
  const Outcome outcome = Run({"--truth", m_in / "truth.csv"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("line 3"), std::string::npos) << outcome.err;
}

TEST_P(Options, MoreThreadsThanProcessorsAreTakenWithoutAWarning) {
  const Outcome outcome = Run({"--threads", "8", "--quiet"});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(outcome.err, "");
}

TEST_P(Options, TheHtmlReportNeedsNoOtherFile) {
  fs::rename(m_frames[0], m_in / "f0 <b>&.png");
  ASSERT_EQ(Run({"--report", m_out / "r.html", "--report", m_out / "r.json"}).exitCode, 0);
  const std::string page = ReadFile(m_out / "r.html");
  EXPECT_NE(page.find("<svg id=\"map\" viewBox=\"0 0 " + std::to_string(Picture().cols) + " "),
            std::string::npos);
  EXPECT_NE(page.find("href=\"data:image/jpeg;base64,/9j/"), std::string::npos);
  EXPECT_EQ(page.find("http"), std::string::npos);
  for (std::size_t at = page.find("src="); at != std::string::npos;
       at = page.find("src=", at + 1)) {
    EXPECT_EQ(page.compare(at, 16, "src=\"data:image/"), 0) << page.substr(at, 40);
  }
  EXPECT_NE(page.find("f0 &lt;b&gt;&amp;.png"), std::string::npos);
  EXPECT_EQ(page.find("<b>"), std::string::npos);
  std::size_t rectangles = 0;
  for (std::size_t at = page.find("<rect "); at != std::string::npos;
       at = page.find("<rect ", at + 1)) {
    ++rectangles;
  }
  EXPECT_EQ(rectangles, m_frames.size());
  // Every frame with its small picture and its number on the map; the seams have a layer.
  const auto count = [&page](const std::string& text) {
    std::size_t found = 0;
    for (std::size_t at = page.find(text); at != std::string::npos; at = page.find(text, at + 1)) {
      ++found;
    }
    return found;
  };
  EXPECT_EQ(count("<img loading"), m_frames.size());
  for (std::size_t i = 1; i <= m_frames.size(); ++i) {
    EXPECT_EQ(count(">" + std::to_string(i) + "</text>"), 1u) << i;
  }
  EXPECT_EQ(count("<g id=\"seams\">\n<path d=\"M"), 1u);
  EXPECT_EQ(count("Shift %"), 1u);
  EXPECT_EQ(ReadJson(m_out / "r.json")["list"].size(), m_frames.size());
}

TEST_P(Options, TheResultDoesNotDependOnTheThreads) {
  ASSERT_EQ(Run({"--threads", "1"}).exitCode, 0);
  const std::string one = ReadFile(m_out / "mosaic.png");
  ASSERT_EQ(Run({"--threads", "4"}).exitCode, 0);
  EXPECT_TRUE(ReadFile(m_out / "mosaic.png") == one);
}

TEST_P(Options, HelpShowsEveryOptionAndExamples) {
  const Outcome outcome = RunProgram({GetParam(), "--help"});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(outcome.err, "");
  Strings expected = {"--output", "--trim",  "--no-trim", "--background", "--report",   "--truth",
                      "--json",   "--quiet", "--threads", "Examples:",    "Exit codes:"};
  const bool live = std::string(GetParam()) == "live";
  const Strings own = live ? Strings{"--overlap-mode", "--detect-level", "--corner-budget",
                                     "--every",        "--max-frames",   "--fps",
                                     "--save-every",   "--preview",      "SOURCE"}
                           : Strings{"--list", "--natural", "--skip-bad", "FILES"};
  expected.insert(expected.end(), own.begin(), own.end());
  for (const std::string& text : expected) {
    EXPECT_NE(outcome.out.find(text), std::string::npos) << text;
  }
}

TEST_P(LiveOptions, EveryTakesEveryNthFrame) {
  const Outcome outcome = Run({"--every", "2", "--json"});
  const std::vector<json> frames = EventsOf(outcome.out, "frame");
  ASSERT_EQ(frames.size(), 3u);
  EXPECT_EQ(frames[1]["number"], 3);
  EXPECT_EQ(EventsOf(outcome.out, "summary")[0]["skipped"], 2);
  EXPECT_EQ(EventsOf(outcome.out, "start")[0]["total"], 3);
}

TEST_P(LiveOptions, MaxFramesEndsTheRun) {
  const Outcome outcome = Run({"--max-frames", "2", "--json"});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(EventsOf(outcome.out, "frame").size(), 2u);
  EXPECT_NEAR(Picture().cols, kFrame.width + 64, 2);
}

TEST_P(LiveOptions, FpsSetsThePace) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Run({"--fps", "5"}).exitCode, 0);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1000));
}

TEST_P(LiveOptions, SaveEverySavesOnTheWay) {
  const Outcome outcome = Run({"--save-every", "0.2", "--fps", "4", "--json"});
  EXPECT_EQ(outcome.exitCode, 0);
  const std::vector<json> pictures = EventsOf(outcome.out, "picture");
  ASSERT_GE(pictures.size(), 2u);
  EXPECT_EQ(pictures.front()["final"], false);
  EXPECT_EQ(pictures.front()["path"], m_out / "mosaic.png");
  EXPECT_EQ(pictures.back()["final"], true);
}

TEST_P(LiveOptions, PreviewIsAPictureAtDisplaySize) {
  const TemporaryFolder wide;
  WriteWalk(wide.Path(), 3, {600, 0}, {1000, 100});
  const Outcome outcome = RunProgram({"live", wide.Path(), "-o", m_out / "mosaic.png", "--preview",
                                      m_out / "now.jpg", "--background", "255,255,255"});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_NEAR(Picture().cols, 2200, 4);
  EXPECT_EQ(ReadPictureFile(m_out / "now.jpg").cols, 1280);
}

TEST_P(LiveOptions, DetectLevelShrinksThePicture) {
  const TemporaryFolder large;
  WriteWalk(large.Path(), 3, {300, 0}, {1000, 800});
  const Outcome outcome =
      RunProgram({"live", large.Path(), "-o", m_out / "mosaic.png", "--detect-level", "2",
                  "--report", m_out / "r.json", "--json"});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_NEAR(Picture().cols, 800, 4);
  EXPECT_EQ(Picture().rows, 400);
  const json report = ReadJson(m_out / "r.json");
  EXPECT_EQ(report["workingSize"]["width"], 500);
  EXPECT_EQ(report["frameSize"]["width"], 1000);
}

TEST_P(LiveOptions, CornerBudgetGivesMoreMatches) {
  const TemporaryFolder large;
  WriteWalk(large.Path(), 2, {200, 0}, {800, 600});
  const auto matches = [&](const char* budget) -> int {
    const Outcome outcome = RunProgram(
        {"live", large.Path(), "-o", m_out / "mosaic.png", "--corner-budget", budget, "--json"});
    return EventsOf(outcome.out, "frame").at(1)["matches"];
  };
  EXPECT_GT(matches("30"), matches("0"));
}

TEST_P(LiveOptions, OverlapModeOneJudgesTheMotion) {
  // The scene changes far more than 5 grey levels from frame to frame.
  const Outcome outcome = Run({"--overlap-mode", "1", "--json"});
  EXPECT_EQ(outcome.exitCode, 4);
  const json second = EventsOf(outcome.out, "frame")[1];
  EXPECT_EQ(second["verdict"], "overlap test failed");
  EXPECT_NE(std::string(second["advice"]).find("--overlap-mode 0"), std::string::npos);
}

TEST_P(LiveOptions, RangesAreChecked) {
  const Strings wrong[] = {{"--overlap-mode", "2"}, {"--detect-level", "0"},
                           {"--detect-level", "8"}, {"--corner-budget", "-1"},
                           {"--every", "0"},        {"--max-frames", "0"},
                           {"--fps", "0"},          {"--save-every", "-1"}};
  for (const Strings& options : wrong) EXPECT_EQ(Run(options).exitCode, 2) << options[0];
}

}  // namespace
}  // namespace jqstitch_test

// Every kind of verdict, with its reason, its advice and the exit code.
#include <gtest/gtest.h>

#include <fstream>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

using nlohmann::json;
using Strings = std::vector<std::string>;

const cv::Size kFrame(320, 240);

class Verdicts : public testing::Test {
 protected:
  // Runs and returns the report's list of frames.
  json Run(const std::string& command, const Strings& files, const Strings& options = {}) {
    Strings arguments = {command, "-o", m_folder / "out/mosaic.png", "--report",
                         m_folder / "out/report.json"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    arguments.insert(arguments.end(), options.begin(), options.end());
    m_outcome = RunProgram(arguments);
    return ReadJson(m_folder / "out/report.json")["list"];
  }

  void SetUp() override { ASSERT_EQ(std::system(("mkdir " + (m_folder / "out")).c_str()), 0); }

  // The reason is in the summary, next to the frame's name.
  void ExpectLine(const std::string& text) const {
    EXPECT_NE(m_outcome.err.find(text), std::string::npos) << text << "\nin\n" << m_outcome.err;
  }

  std::string Write(const std::string& name, const cv::Mat& picture) const {
    EXPECT_TRUE(cv::imwrite(m_folder / name, picture));
    return m_folder / name;
  }

  TemporaryFolder m_folder;
  Outcome m_outcome;
};

TEST_F(Verdicts, AllPlaced) {
  for (const char* command : {"live", "batch"}) {
    const json list = Run(command, WriteWalk(m_folder.Path(), 4, {96, 0}));
    EXPECT_EQ(m_outcome.exitCode, 0);
    ASSERT_EQ(list.size(), 4u);
    for (const json& frame : list) {
      EXPECT_EQ(frame["verdict"], "placed");
      EXPECT_FALSE(frame.contains("reason"));
    }
    ExpectLine("All placed: 4 of 4 frames");
    ExpectLine("  f1.png: placed at 0, 0\n");
  }
}

TEST_F(Verdicts, NoCorners) {
  Strings files = WriteWalk(m_folder.Path(), 3, {96, 0});
  files.insert(files.begin() + 1,
               Write("flat.png", cv::Mat(kFrame, CV_8UC3, cv::Scalar::all(190))));
  for (const char* command : {"live", "batch"}) {
    const json list = Run(command, files);
    EXPECT_EQ(m_outcome.exitCode, 3);
    EXPECT_EQ(list[1]["verdict"], "no corners found");
    EXPECT_FALSE(list[1].contains("matches")) << "nothing was measured";
    EXPECT_NE(list[1]["advice"], "");
    const bool live = std::string(command) == "live";
    ExpectLine(std::string("  flat.png: ") + (live ? "lost" : "left out") +
               ": no corners found in the frame\n");
    ExpectLine(live ? "Some lost: 3 of 4 frames placed, 1 lost"
                    : "Some left out: 3 of 4 frames placed, 1 left out");
  }
}

TEST_F(Verdicts, NoCornersInTheFirstFrame) {
  Strings files = WriteWalk(m_folder.Path(), 2, {96, 0});
  files.insert(files.begin(), Write("flat.png", cv::Mat(kFrame, CV_8UC3, cv::Scalar::all(190))));
  const json list = Run("live", files);
  EXPECT_EQ(m_outcome.exitCode, 4);
  EXPECT_EQ(list[1]["verdict"], "no corners in the first frame");
  EXPECT_EQ(list[2]["verdict"], "no corners in the first frame");
  ExpectLine("None placed: no frame besides the first could be placed (3 frames)");
}

TEST_F(Verdicts, TooFewMatches) {
  // Two frames of one scene that do not overlap.
  const Strings files = WriteFrames(m_folder.Path(), {{0, 0}, {500, 400}});
  const json list = Run("batch", files);
  EXPECT_EQ(m_outcome.exitCode, 4);
  EXPECT_EQ(list[1]["verdict"], "too few matches");
  const int matches = list[1]["matches"], matched = list[1]["matched"];
  ASSERT_LT(matches, 11);
  ASSERT_GT(matched, matches);
  EXPECT_NEAR(double(list[1]["agreeingPercent"]), 100.0 * matches / matched, 1e-9);
  ExpectLine("left out: too few matches (" + std::to_string(int(list[1]["matches"])) + " of 11)\n");
}

TEST_F(Verdicts, AFrameOnTheWayIsTrackedInALiveRun) {
  const Strings files = WriteFrames(m_folder.Path(), {{0, 0}, {16, 0}, {64, 0}});
  const json list = Run("live", files);
  EXPECT_EQ(m_outcome.exitCode, 0) << m_outcome.err;
  EXPECT_EQ(list[1]["verdict"], "shift too small");
  EXPECT_EQ(list[1]["state"], "tracked");
  EXPECT_FALSE(list[1].contains("advice")) << "there is nothing to do";
  EXPECT_NEAR(list[1]["shiftPercent"], 5.0, 1.0);
  EXPECT_EQ(list[2]["verdict"], "placed") << "measured against the frame placed last";
  ExpectLine("  f2.png: tracked: shift too small (");
  ExpectLine(" % of the frame, more than 10 % needed)\n");
  ExpectLine("All followed: 2 of 3 frames placed, 1 tracked");
}

TEST_F(Verdicts, AFrameOnTheWayIsLeftOutOfABatch) {
  const json list = Run("batch", WriteFrames(m_folder.Path(), {{0, 0}, {16, 0}, {64, 0}}));
  EXPECT_EQ(m_outcome.exitCode, 3);
  EXPECT_EQ(list[1]["verdict"], "shift too small");
  ExpectLine("  f2.png: left out: shift too small (");
}

TEST_F(Verdicts, ALostTrackIsOneSentenceAndLikeFramesShareALine) {
  // Two frames placed, three from elsewhere, then back beside the second.
  const Strings files = WriteFrames(
      m_folder.Path(), {{0, 0}, {64, 0}, {900, 700}, {1000, 700}, {1100, 700}, {128, 0}});
  const json list = Run("live", files);
  EXPECT_EQ(m_outcome.exitCode, 3);
  EXPECT_EQ(list[5]["verdict"], "placed");
  for (int i : {2, 3, 4}) EXPECT_EQ(list[i]["state"], "lost");
  ExpectLine(
      "Track lost at frame 3, beside frame 2 at 64, 0 of the picture, found again after "
      "frame 5\n");
  ExpectLine("Some lost: 3 of 6 frames placed, 3 lost");
  const json report = ReadJson(m_folder / "out/report.json");
  ASSERT_EQ(report["losses"].size(), 1u);
  EXPECT_EQ(report["losses"][0],
            json({{"lastHeld", 2}, {"first", 3}, {"last", 5}, {"regained", true}}));
  EXPECT_EQ(report["lost"], 3);
}

TEST_F(Verdicts, EventsTellWhereTheRunStands) {
  const Strings files =
      WriteFrames(m_folder.Path(), {{0, 0}, {64, 0}, {80, 0}, {900, 700}, {128, 0}});
  Run("live", files, {"--json"});
  const std::vector<json> events = EventsOf(m_outcome.out, "frame");
  ASSERT_EQ(events.size(), 5u);
  EXPECT_EQ(events[1]["lost"], nullptr);
  EXPECT_EQ(std::string(events[1]["status"]).rfind("placed (2 placed)", 0), 0u);
  EXPECT_EQ(std::string(events[2]["status"]).rfind("tracked, ", 0), 0u);
  EXPECT_EQ(events[3]["lost"], json({{"since", 4}, {"goBackTo", 3}}));
  const std::string lost = events[3]["status"];
  EXPECT_EQ(lost.rfind("lost since frame 4: ", 0), 0u) << lost;
  EXPECT_NE(lost.find("; go back to where frame 3 was (2 placed, 1 tracked, 1 lost)"),
            std::string::npos)
      << lost;
  EXPECT_GT(std::int64_t(events[3]["memory"]), 1000000);
  EXPECT_GT(double(events[3]["rate"]), 0.0);
  EXPECT_EQ(events[4]["lost"], nullptr);
}

TEST_F(Verdicts, NeighboursLeftOutForOneCauseShareALine) {
  const cv::Mat flat(kFrame, CV_8UC3, cv::Scalar::all(190));
  Strings files = WriteWalk(m_folder.Path(), 2, {96, 0});
  for (const char* name : {"x1.png", "x2.png", "x3.png"}) files.push_back(Write(name, flat));
  Run("live", files);
  ExpectLine("  x1.png to x3.png: 3 frames lost: no corners found in the frame\n");
  ExpectLine(
      "Track lost at frame 3, beside frame 2 at 96, 0 of the picture, and not found again\n");
}

TEST_F(Verdicts, NonePlacedLeavesAnEarlierPictureAlone) {
  const std::string picture = m_folder / "out/mosaic.png";
  const Strings files = WriteFrames(m_folder.Path(), {{0, 0}, {500, 400}});
  for (const char* command : {"live", "batch"}) {
    cv::imwrite(picture, cv::Mat(7, 9, CV_8UC3, cv::Scalar::all(33)));
    const std::string before = ReadFile(picture);
    Run(command, files);
    EXPECT_EQ(m_outcome.exitCode, 4);
    EXPECT_EQ(ReadFile(picture), before) << command;
    ExpectLine("is left as it was, because no frame was placed");
    ASSERT_EQ(std::remove(picture.c_str()), 0);
    Run(command, files);
    EXPECT_EQ(m_outcome.exitCode, 4);
    EXPECT_EQ(ReadPictureFile(picture).size(), kFrame) << "where nothing was, the first frame";
  }
}

TEST_F(Verdicts, NonePlacedHasNoPositionError) {
  const Strings files = WriteFrames(m_folder.Path(), {{0, 0}, {500, 400}});
  std::ofstream(m_folder / "truth.csv") << "file,x,y\nf1.png,0,0\nf2.png,500,400\n";
  Run("live", files, {"--truth", m_folder / "truth.csv"});
  EXPECT_EQ(m_outcome.err.find("Position error"), std::string::npos) << m_outcome.err;
  EXPECT_FALSE(ReadJson(m_folder / "out/report.json").contains("truth"));
}

TEST_F(Verdicts, ShiftTooSmallCountsTheDetectLevel) {
  // At level 2 the stitcher compares the halved shift with the full frame.
  const cv::Size large(800, 600);
  const Strings files = WriteFrames(m_folder.Path(), {{0, 0}, {120, 0}, {200, 0}}, large);
  const json list = Run("live", files, {"--detect-level", "2"});
  EXPECT_EQ(list[1]["verdict"], "shift too small");
  EXPECT_NEAR(list[1]["shiftPercent"], 15.0, 1.0);
  EXPECT_EQ(list[2]["verdict"], "placed");
  ExpectLine(" % of the frame, more than 20 % needed)\n");
}

TEST_F(Verdicts, ShiftTooLarge) {
  // All that can be matched lies in the narrow strip that both frames show. The
  // neutral thresholds of a batch run let such a step pass the overlap test.
  const cv::Size large(2000, 500);
  const cv::Rect strip(1840, 0, 160, 500);
  cv::Mat scene(500, 3840, CV_8UC3, cv::Scalar(200, 190, 210));
  MakeScene(strip.size()).copyTo(scene(strip));
  const Strings files = {Write("a.png", scene(cv::Rect({0, 0}, large))),
                         Write("b.png", scene(cv::Rect({1840, 0}, large)))};
  const json list = Run("batch", files);
  EXPECT_EQ(m_outcome.exitCode, 4);
  EXPECT_EQ(list[1]["verdict"], "shift too large");
  EXPECT_NEAR(list[1]["shiftPercent"], 92.0, 0.5);
  ExpectLine(" % of the frame, less than 90 % needed)\n");
}

TEST_F(Verdicts, OverlapTestFailed) {
  Strings files = WriteWalk(m_folder.Path(), 3, {96, 0});
  const cv::Mat dark = ReadPictureFile(files[1]) * 0.45;
  cv::imwrite(files[1], dark);
  const json list = Run("live", files);
  EXPECT_EQ(m_outcome.exitCode, 3);
  EXPECT_EQ(list[1]["verdict"], "overlap test failed");
  const std::string advice = list[1].value("advice", "");
  EXPECT_NE(advice.find("the exposure changed (-55 %"), std::string::npos) << advice;
  EXPECT_NEAR(list[1]["besidePicture"]["brightness"], 0.45, 0.02);
  EXPECT_GT(list[1]["brightness"]["value"], list[1]["brightness"]["limit"]);
  ExpectLine("lost: overlap test failed: where the previous measurement pointed, brightness");
}

TEST_F(Verdicts, OverlapTestFailedByFocus) {
  Strings files = WriteWalk(m_folder.Path(), 3, {64, 0});
  cv::Mat blurred;
  cv::GaussianBlur(ReadPictureFile(files[1]), blurred, {}, 1.5);
  cv::imwrite(files[1], blurred);
  const json list = Run("live", files);
  if (list[1]["verdict"] == "overlap test failed" && list[1].contains("besidePicture")) {
    EXPECT_NE(std::string(list[1]["advice"]).find("the focus changed"), std::string::npos);
  }
  EXPECT_EQ(list[1]["state"], "lost");
}

TEST_F(Verdicts, SizeDiffers) {
  Strings files = WriteWalk(m_folder.Path(), 3, {96, 0});
  cv::imwrite(files[1], cv::Mat(100, 200, CV_8UC3, cv::Scalar::all(90)));
  const json list = Run("live", files);
  EXPECT_EQ(m_outcome.exitCode, 3);
  EXPECT_EQ(list[1]["verdict"], "size differs");
  ExpectLine("  f2.png: left out: size differs: 200 x 100 pixels instead of 320 x 240\n");
}

TEST_F(Verdicts, Unreadable) {
  Strings files = WriteWalk(m_folder.Path(), 3, {96, 0});
  const std::string whole = ReadFile(files[1]);
  std::ofstream(files[1], std::ios::binary) << whole.substr(0, 60);
  const json list = Run("live", files);
  EXPECT_EQ(m_outcome.exitCode, 3);
  EXPECT_EQ(list[1]["verdict"], "unreadable");
  EXPECT_EQ(list[2]["verdict"], "placed");
  ExpectLine("  f2.png: left out: unreadable: it is damaged or cut short\n");
}

TEST_F(Verdicts, FramesOfEveryDepthAndChannelCountAreTaken) {
  Strings files = WriteWalk(m_folder.Path(), 4, {96, 0});
  cv::Mat wide, alpha, grey;
  ReadPictureFile(files[1]).convertTo(wide, CV_16U, 257);
  cv::cvtColor(ReadPictureFile(files[2]), alpha, cv::COLOR_BGR2BGRA);
  cv::imwrite(files[1], wide);
  cv::imwrite(files[2], alpha);
  EXPECT_EQ(Run("live", files)[3]["verdict"], "placed");
  EXPECT_EQ(m_outcome.exitCode, 0) << m_outcome.err;
  for (const std::string& file : files) {
    cv::cvtColor(cv::imread(file), grey, cv::COLOR_BGR2GRAY);
    cv::imwrite(file, grey);
  }
  EXPECT_EQ(Run("live", files)[3]["verdict"], "placed");
  EXPECT_EQ(m_outcome.exitCode, 0) << m_outcome.err;
}

TEST_F(Verdicts, AFrameWithoutCornersThatABatchPlacesIsDoubted) {
  // Straight lines have no corners, but pass the overlap test. The batch run keeps
  // the last offset, so such a frame follows its predecessor.
  Strings files = WriteWalk(m_folder.Path(), 2, {96, 0});
  cv::Mat lines(kFrame, CV_8UC3, cv::Scalar::all(150));
  for (int x = 20; x < lines.cols; x += 40) {
    cv::line(lines, {x, 0}, {x, lines.rows}, cv::Scalar::all(172), 3);
  }
  files.push_back(Write("lines.png", lines));
  const json list = Run("batch", files);
  EXPECT_EQ(list[2]["verdict"], "placed");
  EXPECT_FALSE(list[2].contains("matches")) << "nothing was measured on it";
  EXPECT_NE(list[2].value("note", "").find("shows no corners"), std::string::npos);
  ExpectLine("it shows no corners and was placed by the frame before it");
  // The live run forgets the offset and leaves the frame out.
  EXPECT_EQ(Run("live", files)[2]["verdict"], "no corners found");
}

TEST_F(Verdicts, OneFrameIsThePicture) {
  const Strings files = WriteWalk(m_folder.Path(), 1, {0, 0});
  for (const char* command : {"live", "batch"}) {
    Run(command, files);
    EXPECT_EQ(m_outcome.exitCode, 0);
    EXPECT_EQ(cv::norm(ReadPictureFile(m_folder / "out/mosaic.png"), ReadPictureFile(files[0]),
                       cv::NORM_INF),
              0);
    ExpectLine("All placed: there is one frame, and it is the picture");
  }
}

}  // namespace
}  // namespace jqstitch_test

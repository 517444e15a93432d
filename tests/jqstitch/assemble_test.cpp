// `jqstitch assemble` as a user runs it.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <opencv2/imgcodecs.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

using Strings = std::vector<std::string>;

const cv::Size kFrame(400, 300);

// Two by two frames, and two further down that nothing connects with them.
class AssembleTest : public testing::Test {
 protected:
  void SetUp() override {
    m_files = WriteFrames(m_folder.Path(),
                          {{0, 0}, {240, 4}, {3, 180}, {242, 181}, {0, 700}, {238, 702}}, kFrame);
  }

  Outcome Run(Strings arguments) const {
    arguments.insert(arguments.begin(), "assemble");
    return RunProgram(arguments);
  }

  TemporaryFolder m_folder;
  Strings m_files;
};

TEST_F(AssembleTest, ShuffledFilesWithAStrangerIslandsAndAReport) {
  const std::string out = m_folder / "mosaic.png", report = m_folder / "report.json";
  const std::string black = m_folder / "black.png";
  cv::imwrite(black, cv::Mat::zeros(kFrame, CV_8UC3));
  std::ofstream(m_folder / "truth.csv")
      << "file,x,y\nf1.png,0,0\nf2.png,240,4\nf3.png,3,180\nf4.png,242,181\n";
  const Outcome run = Run({m_files[5],
                           m_files[3],
                           black,
                           m_files[0],
                           m_files[4],
                           m_files[2],
                           m_files[1],
                           "-o",
                           out,
                           "--report",
                           report,
                           "--islands",
                           "all",
                           "--json",
                           "--truth",
                           m_folder / "truth.csv",
                           "--background",
                           "255,255,255",
                           "--coverage",
                           m_folder / "mask.png"});
  EXPECT_EQ(run.exitCode, 3) << run.err;
  const cv::Mat picture = ReadPictureFile(out);
  EXPECT_NEAR(picture.cols, 642, 2);
  EXPECT_NEAR(picture.rows, 481, 2);
  const cv::Mat other = ReadPictureFile(m_folder / "mosaic-2.png");
  EXPECT_NEAR(other.cols, 638, 2);
  EXPECT_EQ(ReadPictureFile(m_folder / "mask.png").size(), picture.size());
  EXPECT_NE(run.err.find("black.png: left out"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("island 2"), std::string::npos) << run.err;

  const nlohmann::json json = ReadJson(report);
  EXPECT_EQ(json["command"], "assemble");
  EXPECT_EQ(json["placed"], 4);
  EXPECT_EQ(json["outcome"], "some left out");
  EXPECT_LE(json["truth"]["absolute"]["maximum"], 2.0);
  EXPECT_EQ(json["assembly"]["islands"].size(), 2U);
  EXPECT_EQ(json["assembly"]["compared"], 21);
  const auto used =
      std::count_if(json["assembly"]["pairs"].begin(), json["assembly"]["pairs"].end(),
                    [](const nlohmann::json& pair) { return pair["state"] == "used"; });
  EXPECT_EQ(used, json["assembly"]["used"]);
  EXPECT_EQ(EventsOf(run.out, "frame").size(), 7U);
  const auto summary = EventsOf(run.out, "summary");
  ASSERT_EQ(summary.size(), 1U);
  EXPECT_EQ(summary[0]["exitCode"], 3);
}

TEST_F(AssembleTest, HintsLeadToTheSamePicture) {
  const std::string out = m_folder / "mosaic.png";
  const Strings four(m_files.begin(), m_files.begin() + 4);
  Strings plain = four;
  plain.insert(plain.end(), {"-o", out, "-q"});
  ASSERT_EQ(Run(plain).exitCode, 0);
  const cv::Mat picture = ReadPictureFile(out);
  // 2 um a pixel.
  std::ofstream(m_folder / "stage.csv")
      << "f1.png,0,0\nf2.png,500,0\nf3.png,0,350\nf4.png,480,360\n";
  const std::vector<Strings> hints = {
      {"--grid", "2x2", "--order", "row", "--overlap", "40"},
      {"--positions", m_folder / "stage.csv", "--pixel-size", "2um"}};
  for (const Strings& hint : hints) {
    Strings arguments = plain;
    arguments.insert(arguments.end(), hint.begin(), hint.end());
    const Outcome run = Run(arguments);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(cv::norm(ReadPictureFile(out), picture, cv::NORM_INF), 0) << hint[0];
  }
}

TEST_F(AssembleTest, WhatIsWrongIsSaid) {
  const std::string out = m_folder / "mosaic.png";
  const Outcome grid = Run({m_files[0], m_files[1], "-o", out, "--grid", "3x1"});
  EXPECT_EQ(grid.exitCode, 1);
  EXPECT_NE(grid.err.find("3 places for 2 pictures"), std::string::npos) << grid.err;
  EXPECT_EQ(Run({m_files[0], "-o", out, "--order", "snake"}).exitCode, 2);
  EXPECT_EQ(Run({m_files[0], "-o", out, "--grid", "2by3"}).exitCode, 2);

  std::ofstream(m_folder / "bad.png") << "no picture";
  const Outcome bad = Run({m_files[0], m_folder / "bad.png", m_files[1], "-o", out});
  EXPECT_EQ(bad.exitCode, 1);
  EXPECT_NE(bad.err.find("bad.png: unreadable"), std::string::npos) << bad.err;
  EXPECT_EQ(Run({m_files[0], m_folder / "bad.png", m_files[1], "-o", out, "--skip-bad"}).exitCode,
            3);
  EXPECT_EQ(Run({m_files[0], m_files[5], "-o", m_folder / "none.png"}).exitCode, 4);
}

}  // namespace
}  // namespace jqstitch_test

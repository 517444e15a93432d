// Pyramids, pixel sizes, masks and scale bars from the command line.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <opencv2/imgcodecs.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/running_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

using Strings = std::vector<std::string>;

class LargeOutputs : public testing::TestWithParam<const char*> {
 protected:
  // A walk round a corner, so that the picture has parts that no frame covers.
  void SetUp() override {
    m_corners = {{0, 0}, {64, 0}, {128, 0}, {128, 48}, {128, 96}};
    m_frames = WriteFrames(m_in.Path(), m_corners);
  }

  Outcome Run(const Strings& options) {
    Strings arguments = {GetParam(), m_in.Path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunProgram(arguments);
  }

  static bool AreEqual(const cv::Mat& a, const cv::Mat& b) {
    return a.size() == b.size() && a.type() == b.type() && cv::norm(a, b, cv::NORM_L1) == 0;
  }

  TemporaryFolder m_in, m_out;
  std::vector<cv::Point> m_corners;
  Strings m_frames;
};

INSTANTIATE_TEST_SUITE_P(Jqstitch, LargeOutputs, testing::Values("live", "batch"),
                         [](const auto& parameters) { return std::string(parameters.param); });

TEST_P(LargeOutputs, LevelZeroIsThePngAndTheMaskIsTheFrames) {
  const Strings common = {"--background", "255,255,255", "--pixel-size", "0.345um"};
  const auto run = [&](Strings options) {
    options.insert(options.end(), common.begin(), common.end());
    const Outcome outcome = Run(options);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    return outcome;
  };
  const Outcome first = run({"-o", m_out / "a.png", "--coverage", m_out / "mask.png", "--report",
                             m_out / "r.json", "--report", m_out / "r.html"});
  run({"-o", m_out / "a.ome.tif", "--compression", "zstd"});
  const cv::Mat png = ReadPictureFile(m_out / "a.png");
  EXPECT_TRUE(AreEqual(ReadPictureFile(m_out / "a.ome.tif"), png));

  // Told from where the frames lie: the report's corners.
  const nlohmann::json report = ReadJson(m_out / "r.json");
  cv::Mat expected = cv::Mat::zeros(png.size(), CV_8UC1);
  for (const nlohmann::json& frame : report["list"]) {
    ASSERT_TRUE(frame["placed"]);
    const cv::Point corner(frame["corner"]["x"], frame["corner"]["y"]);
    expected(cv::Rect(corner, cv::Size(320, 240))).setTo(255);
  }
  EXPECT_LT(cv::countNonZero(expected), expected.rows * expected.cols);
  EXPECT_TRUE(AreEqual(ReadPictureFile(m_out / "mask.png"), expected));
  EXPECT_DOUBLE_EQ(report["picture"]["pixelSize"]["x"], 0.345e-6);

  // 448 pixels of 0.345 um are 154.56 um.
  const std::string wide = std::to_string(png.cols * 0.345).substr(0, 5);
  EXPECT_NE(first.err.find(wide), std::string::npos) << wide << " in " << first.err;
  EXPECT_NE(ReadFile(m_out / "r.html").find("A pixel is 345 nm"), std::string::npos);
}

TEST(LargeOutputsLive, OptionsThatDoNotFitAreRefused) {
  const Strings rows[] = {{"-o", "a.png", "--compression", "lzw"},
                          {"-o", "a.dzi", "--compression", "zstd"},
                          {"-o", "a.ome.tif", "--compression", "best"},
                          {"-o", "a.ome.tif", "--quality", "80"},
                          {"-o", "a.png", "--scale-bar"},
                          {"-o", "a.png", "--pixel-size", "0.345"},
                          {"-o", "a.png", "--pixel-size", "3 furlongs"},
                          {"-o", "a.png", "--pixel-size", "0um"},
                          {"-o", "a.png", "--pixel-size", "1e3um"},
                          {"-o", "a.png", "--pixel-size", "101mm"},
                          {"-o", "a.png", "--coverage", "mask.jpg"}};
  for (const Strings& row : rows) {
    Strings arguments = {"live", "frames"};
    arguments.insert(arguments.end(), row.begin(), row.end());
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.exitCode, 2) << row.back() << "\n" << outcome.err;
    EXPECT_NE(outcome.err.find(row[2]), std::string::npos) << outcome.err;
  }
}

// Frames are halved before they are placed, so that a pixel of the picture is twice as
// wide.
TEST(LargeOutputsLive, ThePixelSizeFollowsTheDetectionLevelAndTheBarIsDrawn) {
  const TemporaryFolder in, out;
  WriteWalk(in.Path(), 3, {160, 0}, {640, 480});
  const Strings common = {"live", in.Path(), "--detect-level", "2", "--pixel-size", "1\xc2\xb5m"};
  const auto run = [&](Strings options) {
    options.insert(options.begin(), common.begin(), common.end());
    EXPECT_EQ(RunProgram(options).exitCode, 0);
  };
  run({"-o", out / "a.png", "--report", out / "r.json"});
  run({"-o", out / "b.png", "--scale-bar"});
  EXPECT_DOUBLE_EQ(ReadJson(out / "r.json")["picture"]["pixelSize"]["x"], 2e-6);
  const cv::Mat plain = ReadPictureFile(out / "a.png"), barred = ReadPictureFile(out / "b.png");
  ASSERT_EQ(plain.size(), barred.size());
  cv::Mat different;
  cv::absdiff(plain, barred, different);
  const cv::Rect corner(plain.cols / 2, plain.rows / 2, plain.cols / 2, plain.rows / 2);
  EXPECT_GT(cv::countNonZero(different(corner).clone().reshape(1)), 100);
  different(corner).setTo(cv::Scalar::all(0));
  EXPECT_EQ(cv::countNonZero(different.reshape(1)), 0);
}

}  // namespace
}  // namespace jqstitch_test

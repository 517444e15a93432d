// `jqstitch inspect`, run as a user runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "jqstitch/run_program.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

// The colours of the picture, blue-green-red.
const cv::Vec3b kInlier(115, 158, 0);
const cv::Vec3b kOutlier(0, 94, 213);
const cv::Vec3b kFromFirst(178, 114, 0);
const cv::Vec3b kFromSecond(0, 159, 230);

int Count(const cv::Mat& picture, const cv::Vec3b& colour) {
  cv::Mat mask;
  cv::inRange(picture, cv::Scalar(colour), cv::Scalar(colour), mask);
  return cv::countNonZero(mask);
}

// A row of frames of 480 x 360; frame k starts 96 (k - 1) pixels to the right.
class Inspect : public testing::Test {
 protected:
  void SetUp() override {
    const Outcome outcome =
        RunProgram({"simulate", "-o", m_folder / "pass", "--path", "row", "--size", "480x360",
                    "--step", "20", "-n", "4", "--scene", m_folder / "scene.png", "-q"});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
  }

  std::string Frame(int number) const {
    return m_folder / "pass/frame_000" + std::to_string(number) + ".png";
  }

  std::string Write(const std::string& name, const cv::Mat& image) const {
    EXPECT_TRUE(cv::imwrite(m_folder / name, image));
    return m_folder / name;
  }

  // Runs, expects the exit code that goes with the sentence, and returns the picture;
  // the sentence goes to m_said.
  cv::Mat Run(const std::string& a, const std::string& b, const Strings& options = {}) {
    Strings arguments = {"inspect", a, b, "-o", m_folder / "pair.png"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = RunProgram(arguments);
    m_said = outcome.out;
    const bool placed = m_said.find("B would be placed") != std::string::npos;
    EXPECT_EQ(outcome.exitCode, placed ? 0 : 3) << m_said;
    EXPECT_EQ(outcome.err, "");
    const cv::Mat picture = cv::imread(m_folder / "pair.png", cv::IMREAD_COLOR);
    EXPECT_FALSE(picture.empty());
    return picture;
  }

  void ExpectSaid(const std::string& words) const {
    EXPECT_NE(m_said.find(words), std::string::npos) << m_said;
  }

  TemporaryFolder m_folder;
  std::string m_said;
};

TEST_F(Inspect, SaysThatAFrameWouldBePlacedAndWhere) {
  const cv::Mat picture = Run(Frame(1), Frame(2));
  ExpectSaid("B would be placed: offset (96, 0), 20.0 % of the frame");
  EXPECT_EQ(picture.cols, 1600);
  EXPECT_GT(Count(picture, kInlier), 500);
}

TEST_F(Inspect, TheOffsetCanPointBackwards) {
  Run(Frame(3), Frame(1));
  ExpectSaid("offset (-192, 0), 40.0 %");
}

// How many pixels lie near the colour: lines have smooth edges.
int CountNear(const cv::Mat& picture, const cv::Vec3b& colour) {
  cv::Mat mask;
  const cv::Scalar near = cv::Scalar::all(70);
  cv::inRange(picture, cv::Scalar(colour) - near, cv::Scalar(colour) + near, mask);
  return cv::countNonZero(mask);
}

TEST_F(Inspect, LinesOfBothKindsCrossTheGapBetweenTheFrames) {
  const cv::Rect gap(12 + 782, 100, 12, 500);
  const cv::Mat picture = Run(Frame(1), Frame(4), {"--lines", "100000"});
  EXPECT_GT(CountNear(picture(gap), kInlier), 0);
  EXPECT_GT(CountNear(picture(gap), kOutlier), 0);
  const cv::Mat markersOnly = Run(Frame(1), Frame(4), {"--lines", "0"});
  EXPECT_EQ(CountNear(markersOnly(gap), kInlier), 0);
  EXPECT_EQ(CountNear(markersOnly(gap), kOutlier), 0);
}

TEST_F(Inspect, InliersAreSolidAndOutliersDashed) {
  // The legend's samples reach from x = 16 to 62; no mark of a frame lies so far left.
  const cv::Mat picture = Run(Frame(1), Frame(4));
  int solid = 0;
  int dashed = 0;
  for (int y = 0; y < picture.rows; ++y) {
    const cv::Mat sample = picture(cv::Rect(25, y, 28, 1));
    if (CountNear(sample, kInlier) == 28) ++solid;
    const int ink = CountNear(sample, kOutlier);
    const int paper = Count(sample, cv::Vec3b(255, 255, 255));
    if (ink >= 10 && paper >= 6) ++dashed;
  }
  EXPECT_GE(solid, 1);
  EXPECT_GE(dashed, 1);
}

TEST_F(Inspect, ShowsTheWeightsOfBothFrames) {
  const cv::Mat picture = Run(Frame(1), Frame(2));
  // A fifth of each frame belongs to it alone; the map is 782 pixels wide for 576.
  const int alone = 96 * 782 / 576 * (360 * 782 / 576);
  EXPECT_GT(Count(picture, kFromFirst), alone * 9 / 10);
  EXPECT_GT(Count(picture, kFromSecond), alone * 9 / 10);
}

TEST_F(Inspect, ShowsBothFramesAndTheFusedResult) {
  // Two panes of 480 with margins of 12 make 996: the frames are drawn as they are.
  const cv::Mat picture = Run(Frame(1), Frame(2), {"--width", "996", "--lines", "0"});
  // No corner is found within 40 pixels of a border, so no mark hides these strips.
  const cv::Mat first = cv::imread(Frame(1))(cv::Rect(0, 0, 480, 30));
  const cv::Mat second = cv::imread(Frame(2))(cv::Rect(0, 0, 480, 30));
  int found = 0;
  for (int y = 0; y + 30 <= picture.rows; ++y) {
    const cv::Mat left = picture(cv::Rect(12, y, 480, 30));
    const cv::Mat right = picture(cv::Rect(504, y, 480, 30));
    if (cv::norm(left, first, cv::NORM_INF) == 0 && cv::norm(right, second, cv::NORM_INF) == 0) {
      ++found;
    }
  }
  EXPECT_EQ(found, 1);
  // The fused result is 576 wide and has one pane: what is A's alone is A, shrunk.
  const double scale = 480.0 / 576;
  const cv::Mat fused = picture(cv::Rect(12, picture.rows - 12 - 300, 480, 300));
  cv::Mat expected;
  cv::resize(cv::imread(Frame(1)), expected, cv::Size(), scale, scale, cv::INTER_AREA);
  const cv::Rect alone(2, 2, 76, 290);
  EXPECT_LE(cv::norm(fused(alone), expected(alone), cv::NORM_INF), 1.0);
}

TEST_F(Inspect, TheSameFrameTwiceIsTooSmallAShift) {
  Run(Frame(1), Frame(1));
  ExpectSaid("B would be left out: shift too small (0.0 % of the frame");
}

TEST_F(Inspect, FlatFramesHaveNoCorners) {
  const std::string flat = Write("flat.png", cv::Mat(360, 480, CV_8UC3, cv::Scalar(90, 90, 90)));
  cv::Mat picture = Run(Frame(1), flat);
  ExpectSaid("B would be left out: no corners found in the frame.");
  EXPECT_EQ(Count(picture, kFromSecond), 0) << "there is no weight map";
  Run(flat, Frame(1));
  ExpectSaid("B would be left out: no corners found in the first frame");
  picture = Run(flat, flat);
  ExpectSaid("no corners found");
  EXPECT_EQ(picture.cols, 1600);
}

TEST_F(Inspect, BlackFramesAreTakenToo) {
  const std::string black = Write("black.png", cv::Mat::zeros(360, 480, CV_8UC3));
  Run(black, black);
  ExpectSaid("no corners found");
}

TEST_F(Inspect, FramesOfDifferentPlacesHaveTooFewMatches) {
  const Outcome outcome = RunProgram({"simulate", "-o", m_folder / "elsewhere", "--size", "480x360",
                                      "-n", "1", "--seed", "9", "-q"});
  ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
  Run(Frame(1), m_folder / "elsewhere/frame_0001.png");
  ExpectSaid("B would be left out: too few matches (");
  ExpectSaid(" of 11)");
}

TEST_F(Inspect, ADarkFrameFailsTheOverlapTest) {
  const cv::Mat dark = cv::imread(Frame(2)) * 0.7;
  Run(Frame(1), Write("dark.png", dark));
  ExpectSaid("B would be left out: overlap test failed");
  ExpectSaid("Overlap test: brightness differs by ");
  ExpectSaid("(limit 40)");
  ExpectSaid("; failed");
}

TEST_F(Inspect, TheMotionTestIsChosenByTheOverlapMode) {
  Run(Frame(1), Frame(3), {"--overlap-mode", "1"});
  ExpectSaid("B would be left out: overlap test failed");
  ExpectSaid("Motion test: ");
  ExpectSaid("(limit 5); failed");
}

TEST_F(Inspect, TheDetectLevelDividesTheOffset) {
  const Outcome outcome = RunProgram({"simulate", "-o", m_folder / "large", "--size", "960x720",
                                      "--path", "row", "--step", "25", "-n", "2", "-q"});
  ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
  const std::string first = m_folder / "large/frame_0001.png";
  const std::string second = m_folder / "large/frame_0002.png";
  Run(first, second, {"--detect-level", "2"});
  // Half of (240, 0), as exact as corners on a grid of 2 pixels are.
  ExpectSaid("B would be placed");
  const std::size_t place = m_said.find("offset (");
  ASSERT_NE(place, std::string::npos) << m_said;
  EXPECT_NEAR(std::stoi(m_said.substr(place + 8)), 120, 4) << m_said;
  // The least shift is 10 % of the full frame, whatever the scale it is measured at.
  Run(first, second, {"--detect-level", "3"});
  ExpectSaid("more than 30 % needed");
}

TEST_F(Inspect, SaysWhatALiveRunDoes) {
  for (int b = 1; b <= 4; ++b) {
    Run(Frame(1), Frame(b));
    const Outcome live =
        RunProgram({"live", Frame(1), Frame(b), "-o", m_folder / "mosaic.png", "-q"});
    const bool placed = m_said.find("would be placed") != std::string::npos;
    // A live run tracks a frame that has not moved far enough.
    const bool tracked = m_said.find("shift too small") != std::string::npos;
    EXPECT_EQ(live.exitCode, placed || tracked ? 0 : 4) << m_said << live.err;
  }
}

TEST_F(Inspect, ALargerBudgetFindsMoreCorners) {
  const Outcome outcome = RunProgram({"simulate", "-o", m_folder / "large", "--size", "1280x960",
                                      "--path", "row", "-n", "2", "-q"});
  ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
  const std::string first = m_folder / "large/frame_0001.png";
  const std::string second = m_folder / "large/frame_0002.png";
  // The sentence ends "n of m matches agree".
  const auto matches = [&] {
    return std::stoi(m_said.substr(m_said.find(" of the frame, ") + 15));
  };
  Run(first, second, {"--corner-budget", "0"});
  const int few = matches();
  Run(first, second, {"--corner-budget", "8"});
  EXPECT_GT(matches(), few);
}

TEST_F(Inspect, WorksOnOddShapes) {
  const cv::Mat scene = cv::imread(m_folder / "scene.png");
  Run(Write("tall_a.png", scene(cv::Rect(0, 0, 90, 250))),
      Write("tall_b.png", scene(cv::Rect(30, 0, 90, 250))));
  Run(Write("tiny_a.png", scene(cv::Rect(0, 0, 8, 4))),
      Write("tiny_b.png", scene(cv::Rect(3, 0, 8, 4))));
  ExpectSaid("no corners found");
}

TEST_F(Inspect, QuietSaysNothing) {
  const Outcome outcome =
      RunProgram({"inspect", Frame(1), Frame(2), "-o", m_folder / "pair.png", "-q"});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
}

// --- errors ---------------------------------------------------------------------

TEST_F(Inspect, DifferentSizesAreNamed) {
  const std::string other = Write("other.png", cv::Mat(360, 300, CV_8UC3, cv::Scalar::all(9)));
  const Outcome outcome = RunProgram({"inspect", Frame(1), other, "-o", m_folder / "pair.png"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("480x360"), std::string::npos) << outcome.err;
  EXPECT_NE(outcome.err.find("300x360"), std::string::npos) << outcome.err;
  EXPECT_FALSE(fs::exists(m_folder / "pair.png"));
}

TEST_F(Inspect, AFileThatIsNoPictureIsNamed) {
  std::ofstream(m_folder / "text.png") << "no picture";
  const Outcome outcome =
      RunProgram({"inspect", Frame(1), m_folder / "text.png", "-o", m_folder / "pair.png"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("text.png"), std::string::npos) << outcome.err;
}

TEST_F(Inspect, AMissingFrameIsWrongInput) {
  const Outcome outcome =
      RunProgram({"inspect", Frame(1), m_folder / "missing.png", "-o", m_folder / "pair.png"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("missing.png': there is no such file"), std::string::npos)
      << outcome.err;
}

TEST_F(Inspect, AnOutputThatCannotBeWrittenIsNamed) {
  for (const char* name : {"no/such/folder/pair.png", "pair.xyz", "pair"}) {
    const Outcome outcome =
        RunProgram({"inspect", Frame(1), Frame(2), "-o", m_folder / std::string(name)});
    EXPECT_EQ(outcome.exitCode, 1) << name;
    EXPECT_NE(outcome.err.find(name), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.out, "");
  }
}

TEST_F(Inspect, WrongUsageIsRefused) {
  const Strings rows[] = {{},
                          {Frame(1)},
                          {Frame(1), Frame(2)},
                          {Frame(1), Frame(2), Frame(3), "-o", m_folder / "p.png"},
                          {Frame(1), Frame(2), "-o", m_folder / "p.png", "--detect-level", "0"},
                          {Frame(1), Frame(2), "-o", m_folder / "p.png", "--detect-level", "8"},
                          {Frame(1), Frame(2), "-o", m_folder / "p.png", "--corner-budget", "-1"},
                          {Frame(1), Frame(2), "-o", m_folder / "p.png", "--overlap-mode", "2"},
                          {Frame(1), Frame(2), "-o", m_folder / "p.png", "--width", "10"}};
  for (const Strings& row : rows) {
    Strings arguments = {"inspect"};
    arguments.insert(arguments.end(), row.begin(), row.end());
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.exitCode, 2) << testing::PrintToString(row);
    EXPECT_NE(outcome.err, "");
    EXPECT_EQ(outcome.out, "");
  }
}

}  // namespace
}  // namespace jqstitch_test

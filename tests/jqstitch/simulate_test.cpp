// `jqstitch simulate`, run as a user runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/videoio.hpp>
#include <sstream>

#include "host/simulate/random_stream.h"
#include "jqstitch/run_program.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

struct TruthLine {
  std::string file;
  int x, y;
};

std::vector<TruthLine> ReadTruth(const std::string& folder) {
  std::istringstream text(ReadFile(folder + "/truth.csv"));
  std::string line;
  std::getline(text, line);
  EXPECT_EQ(line, "file,x,y");
  std::vector<TruthLine> lines;
  while (std::getline(text, line)) {
    TruthLine entry;
    char comma = 0;
    std::istringstream fields(line);
    std::getline(fields, entry.file, ',');
    fields >> entry.x >> comma >> entry.y;
    EXPECT_TRUE(fields && comma == ',') << line;
    lines.push_back(entry);
  }
  return lines;
}

// Runs with a small frame and the given options; returns the truth.
std::vector<TruthLine> Simulate(const std::string& folder, const Strings& options) {
  Strings arguments = {"simulate", "-o", folder, "--size", "200x100", "-q"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Outcome outcome = RunProgram(arguments);
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "");
  return ReadTruth(folder);
}

// Corners relative to the first frame's, as "x,y x,y ...".
std::string Steps(const std::vector<TruthLine>& truth) {
  std::string text;
  for (const TruthLine& line : truth) {
    text += (text.empty() ? "" : " ") + std::to_string(line.x - truth[0].x) + "," +
            std::to_string(line.y - truth[0].y);
  }
  return text;
}

bool SamePixels(const cv::Mat& a, const cv::Mat& b) {
  return a.size() == b.size() && a.type() == b.type() &&
         cv::countNonZero(a.reshape(1) != b.reshape(1)) == 0;
}

void ExpectSameFolder(const std::string& a, const std::string& b) {
  ASSERT_EQ(ListFolder(a), ListFolder(b));
  for (const std::string& name : ListFolder(a)) {
    EXPECT_TRUE(ReadFile(a + "/" + name) == ReadFile(b + "/" + name)) << name;
  }
}

double Mean(const cv::Mat& image) {
  const cv::Scalar mean = cv::mean(image);
  return (mean[0] + mean[1] + mean[2]) / 3;
}

// --- frames and truth ---------------------------------------------------------

TEST(Simulate, FramesAreNumberedAndListed) {
  TemporaryFolder folder;
  const auto truth = Simulate(folder / "pass", {"-n", "3"});
  EXPECT_EQ(ListFolder(folder / "pass"),
            (Strings{"frame_0001.png", "frame_0002.png", "frame_0003.png", "truth.csv"}));
  ASSERT_EQ(truth.size(), 3U);
  EXPECT_EQ(truth[0].file, "frame_0001.png");
  EXPECT_EQ(truth[2].file, "frame_0003.png");
}

TEST(Simulate, TruthIsWhereTheFrameLiesInTheScene) {
  TemporaryFolder folder;
  for (const char* path : {"row", "serpentine", "spiral", "random"}) {
    SCOPED_TRACE(path);
    const std::string pass = folder / path;
    const std::string scenePath = folder / (std::string(path) + ".png");
    const auto truth = Simulate(
        pass, {"-n", "12", "--path", path, "--jumps", "2", "--step", "31", "--scene", scenePath});
    const cv::Mat scene = cv::imread(scenePath, cv::IMREAD_COLOR);
    ASSERT_FALSE(scene.empty());
    ASSERT_EQ(truth.size(), 12U);
    for (const TruthLine& line : truth) {
      const cv::Mat frame = cv::imread(pass + "/" + line.file, cv::IMREAD_COLOR);
      const cv::Rect area(line.x, line.y, 200, 100);
      ASSERT_EQ(area & cv::Rect(cv::Point(), scene.size()), area) << line.file;
      EXPECT_TRUE(SamePixels(frame, scene(area))) << line.file;
    }
  }
}

TEST(Simulate, FramesComeFromTheGivenPicture) {
  TemporaryFolder folder;
  cv::Mat picture(500, 700, CV_8UC3);
  cv::RNG random(7);
  random.fill(picture, cv::RNG::UNIFORM, 0, 256);
  ASSERT_TRUE(cv::imwrite(folder / "picture.png", picture));
  const auto truth = Simulate(folder / "pass", {"-n", "4", "--image", folder / "picture.png"});
  for (const TruthLine& line : truth) {
    const cv::Mat frame = cv::imread(folder / "pass/" + line.file, cv::IMREAD_COLOR);
    EXPECT_TRUE(SamePixels(frame, picture(cv::Rect(line.x, line.y, 200, 100)))) << line.file;
  }
  // Two lines of two, in the middle: 240 x 120 of 700 x 500.
  EXPECT_EQ(truth[0].x, 230);
  EXPECT_EQ(truth[0].y, 190);
}

TEST(Simulate, AnyPictureIsAScene) {
  TemporaryFolder folder;
  cv::Mat colour(200, 400, CV_8UC3), grey;
  cv::RNG random(11);
  random.fill(colour, cv::RNG::UNIFORM, 1, 256);
  cv::cvtColor(colour, grey, cv::COLOR_BGR2GRAY);
  grey.at<unsigned char>(0, 0) = 255;
  cv::Mat deep;
  grey.convertTo(deep, CV_16U, 16);  // 12 significant bits
  ASSERT_TRUE(cv::imwrite(folder / "grey.png", grey));
  ASSERT_TRUE(cv::imwrite(folder / "deep.tif", deep));
  for (const char* name : {"grey.png", "deep.tif"}) {
    const std::string pass = folder / (std::string(name) + ".pass");
    for (const TruthLine& line : Simulate(pass, {"-n", "2", "--image", folder / name})) {
      cv::Mat expected;
      cv::cvtColor(grey(cv::Rect(line.x, line.y, 200, 100)), expected, cv::COLOR_GRAY2BGR);
      EXPECT_TRUE(SamePixels(cv::imread(pass + "/" + line.file, cv::IMREAD_COLOR), expected))
          << name << " " << line.file;
    }
  }
}

TEST(Simulate, AStreamIsAVideoOfTheSameFrames) {
  TemporaryFolder folder;
  const auto pictures = Simulate(folder / "pictures", {"-n", "5", "--seed", "9"});
  const auto truth = Simulate(folder / "video", {"-n", "5", "--seed", "9", "--stream"});
  Simulate(folder / "again", {"-n", "5", "--seed", "9", "--stream"});
  EXPECT_EQ(ListFolder(folder / "video"), (Strings{"frames.avi", "truth.csv"}));
  ExpectSameFolder(folder / "video", folder / "again");
  EXPECT_EQ(Steps(truth), Steps(pictures));
  cv::VideoCapture video(folder / "video/frames.avi");
  for (const TruthLine& line : pictures) {
    cv::Mat frame;
    ASSERT_TRUE(video.read(frame)) << line.file;
    const cv::Mat picture = cv::imread(folder / "pictures/" + line.file, cv::IMREAD_COLOR);
    ASSERT_EQ(frame.size(), picture.size());
    // JPEG keeps the pixels roughly, half the colour among them.
    EXPECT_LT(cv::norm(frame, picture, cv::NORM_L1) / double(3 * frame.total()), 4.0) << line.file;
  }
  // A live run finds the truth of each by its name, where frames can be placed.
  const Outcome walk = RunProgram({"simulate", "-o", folder / "walk", "-n", "8", "--size",
                                   "400x300", "--path", "row", "--step", "4", "--stream", "-q"});
  ASSERT_EQ(walk.exitCode, 0) << walk.err;
  const Outcome outcome = RunProgram({"live", folder / "walk/frames.avi", "-o",
                                      folder / "mosaic.png", "--truth", folder / "walk/truth.csv"});
  EXPECT_NE(outcome.err.find("Position error in pixels"), std::string::npos) << outcome.err;
  EXPECT_EQ(outcome.err.find("not in the truth"), std::string::npos) << outcome.err;
}

TEST(Simulate, ForceReplacesAStream) {
  TemporaryFolder folder;
  Simulate(folder / "pass", {"-n", "2", "--stream"});
  Simulate(folder / "pass", {"-n", "2", "--force"});
  EXPECT_EQ(ListFolder(folder / "pass"),
            (Strings{"frame_0001.png", "frame_0002.png", "truth.csv"}));
}

// --- generator ----------------------------------------------------------------

// Published first outputs of splitmix64.
TEST(RandomStream, IsSplitmix64) {
  jqhost::RandomStream zero(0);
  EXPECT_EQ(zero.Next(), 0xe220a8397b1dcdafU);
  EXPECT_EQ(zero.Next(), 0x6e789e6aa1b965f4U);
  EXPECT_EQ(zero.Next(), 0x06c45d188009454fU);
  jqhost::RandomStream other(1234567);
  EXPECT_EQ(other.Next(), 6457827717110365317U);
  EXPECT_EQ(other.Next(), 3203168211198807973U);
}

TEST(RandomStream, BetweenReachesBothEndsAndNoFurther) {
  jqhost::RandomStream stream(3);
  bool seen[5] = {};
  for (int i = 0; i < 1000; ++i) {
    const int value = stream.Between(-2, 2);
    ASSERT_GE(value, -2);
    ASSERT_LE(value, 2);
    seen[value + 2] = true;
  }
  for (const bool one : seen) EXPECT_TRUE(one);
}

TEST(RandomStream, BellHasItsDeviation) {
  jqhost::RandomStream stream(9);
  double sum = 0;
  double squares = 0;
  constexpr int kDraws = 200000;
  for (int i = 0; i < kDraws; ++i) {
    const double value = stream.Bell() / jqhost::RandomStream::kBellDeviation;
    sum += value;
    squares += value * value;
  }
  EXPECT_NEAR(sum / kDraws, 0.0, 0.01);
  EXPECT_NEAR(squares / kDraws, 1.0, 0.01);
}

// --- determinism --------------------------------------------------------------

const Strings kEverything = {"-n",      "6",   "--path",       "random", "--jumps",           "1",
                             "--noise", "4.5", "--vignetting", "30",     "--exposure-jitter", "10",
                             "--blur",  "1.2"};

Strings WithSeed(Strings options, const char* seed) {
  options.push_back("--seed");
  options.push_back(seed);
  return options;
}

TEST(Simulate, SameSeedGivesTheSameBytes) {
  TemporaryFolder folder;
  Simulate(folder / "a", WithSeed(kEverything, "77"));
  Simulate(folder / "b", WithSeed(kEverything, "77"));
  ExpectSameFolder(folder / "a", folder / "b");
}

TEST(Simulate, SameSeedGivesTheSameJpegBytes) {
  TemporaryFolder folder;
  Simulate(folder / "a", {"-n", "3", "--jpeg-quality", "80", "--noise", "3"});
  Simulate(folder / "b", {"-n", "3", "--jpeg-quality", "80", "--noise", "3"});
  EXPECT_EQ(ListFolder(folder / "a")[0], "frame_0001.jpg");
  ExpectSameFolder(folder / "a", folder / "b");
}

TEST(Simulate, AnotherSeedGivesAnotherPass) {
  TemporaryFolder folder;
  const auto a = Simulate(folder / "a", WithSeed(kEverything, "77"));
  const auto b = Simulate(folder / "b", WithSeed(kEverything, "78"));
  EXPECT_NE(Steps(a), Steps(b));
  EXPECT_NE(ReadFile(folder / "a/frame_0001.png"), ReadFile(folder / "b/frame_0001.png"));
}

TEST(Simulate, NoiseDoesNotMoveTheCamera) {
  TemporaryFolder folder;
  const auto a = Simulate(folder / "a", {"-n", "9", "--path", "random"});
  const auto b = Simulate(folder / "b", {"-n", "9", "--path", "random", "--noise", "9"});
  EXPECT_EQ(Steps(a), Steps(b));
}

// --- paths ----------------------------------------------------------------------

struct PathRow {
  const char* name;
  Strings options;
  const char* steps;  // frames are 200 x 100, steps 10 %: 20 across, 10 down
};

class SimulatePath : public testing::TestWithParam<PathRow> {};

TEST_P(SimulatePath, GoesThere) {
  TemporaryFolder folder;
  Strings options = {"--step", "10"};
  options.insert(options.end(), GetParam().options.begin(), GetParam().options.end());
  EXPECT_EQ(Steps(Simulate(folder / "pass", options)), GetParam().steps);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, SimulatePath,
    testing::Values(
        PathRow{"one", {"-n", "1"}, "0,0"},
        PathRow{"right", {"-n", "3", "--path", "row"}, "0,0 20,0 40,0"},
        PathRow{"up_right",
                {"-n", "3", "--path", "row", "--direction", "up-right"},
                "0,0 20,-10 40,-20"},
        PathRow{
            "down_left", {"-n", "2", "--path", "row", "--direction", "down-left"}, "0,0 -20,10"},
        PathRow{"left", {"-n", "2", "--path", "row", "--direction", "left"}, "0,0 -20,0"},
        PathRow{"serpentine",
                {"-n", "7", "--path", "serpentine", "--columns", "3"},
                "0,0 20,0 40,0 40,10 20,10 0,10 0,20"},
        PathRow{"serpentine_square", {"-n", "4"}, "0,0 20,0 20,10 0,10"},
        PathRow{"spiral",
                {"-n", "10", "--path", "spiral"},
                "0,0 20,0 20,10 0,10 -20,10 -20,0 -20,-10 0,-10 20,-10 40,-10"}),
    [](const auto& row) { return row.param.name; });

TEST(SimulateWalk, StepsAreThreeToFiveQuartersAndNeverTurnBack) {
  TemporaryFolder folder;
  const auto truth =
      Simulate(folder / "pass", {"-n", "60", "--path", "random", "--step", "10", "--seed", "5"});
  cv::Point before;
  for (std::size_t i = 1; i < truth.size(); ++i) {
    const cv::Point step(truth[i].x - truth[i - 1].x, truth[i].y - truth[i - 1].y);
    EXPECT_TRUE(step.x == 0 || (std::abs(step.x) >= 15 && std::abs(step.x) <= 25)) << step;
    EXPECT_TRUE(step.y == 0 || (std::abs(step.y) >= 7 && std::abs(step.y) <= 12)) << step;
    EXPECT_TRUE(step.x != 0 || step.y != 0);
    if (i > 1) {
      const cv::Point sign((step.x > 0) - (step.x < 0), (step.y > 0) - (step.y < 0));
      EXPECT_GE(sign.dot(before), 0) << "frame " << i;
    }
    before = cv::Point((step.x > 0) - (step.x < 0), (step.y > 0) - (step.y < 0));
  }
}

TEST(SimulateJumps, LeaveThePathForOneFrame) {
  TemporaryFolder folder;
  const auto plain = Simulate(folder / "a", {"-n", "12", "--path", "row"});
  const auto jumping = Simulate(folder / "b", {"-n", "12", "--path", "row", "--jumps", "3"});
  int jumps = 0;
  for (std::size_t i = 0; i < plain.size(); ++i) {
    const cv::Point aside((jumping[i].x - jumping[0].x) - (plain[i].x - plain[0].x),
                          (jumping[i].y - jumping[0].y) - (plain[i].y - plain[0].y));
    if (aside == cv::Point()) continue;
    ++jumps;
    EXPECT_TRUE(i != 0 && i != plain.size() - 1);
    EXPECT_TRUE((std::abs(aside.x) == 260 && aside.y == 0) ||
                (aside.x == 0 && std::abs(aside.y) == 130))
        << aside;
  }
  EXPECT_EQ(jumps, 3);
}

// --- camera effects -------------------------------------------------------------

// A grey picture: what an effect does shows as plain numbers.
class SimulateEffect : public testing::Test {
 protected:
  cv::Mat Take(const Strings& options, int frame = 1) {
    cv::imwrite(m_folder / "grey.png", cv::Mat(400, 600, CV_8UC3, cv::Scalar(100, 100, 100)));
    Strings all = {"-n", "5", "--image", m_folder / "grey.png", "--force"};
    all.insert(all.end(), options.begin(), options.end());
    Simulate(m_folder / "pass", all);
    const cv::Mat image = cv::imread(m_folder / "pass/frame_000" + std::to_string(frame) + ".png");
    EXPECT_FALSE(image.empty());
    return image.empty() ? cv::Mat(100, 200, CV_8UC3, cv::Scalar()) : image;
  }

  TemporaryFolder m_folder;
};

TEST_F(SimulateEffect, NoiseHasTheAskedDeviation) {
  const cv::Mat frame = Take({"--noise", "6"});
  cv::Scalar mean, deviation;
  cv::meanStdDev(frame, mean, deviation);
  for (int k = 0; k < 3; ++k) {
    // 20000 samples: the mean is good to 0.05, the deviation to 0.03.
    EXPECT_NEAR(mean[k], 100.0, 0.3);
    EXPECT_NEAR(deviation[k], 6.0, 0.2);
  }
  cv::Mat channels[3];
  cv::split(frame, channels);
  EXPECT_FALSE(SamePixels(channels[0], channels[1])) << "the channels share their noise";
}

TEST_F(SimulateEffect, NoiseDiffersFromFrameToFrame) {
  const cv::Mat first = Take({"--noise", "6"}, 1);
  EXPECT_FALSE(SamePixels(first, Take({"--noise", "6"}, 2)));
}

TEST_F(SimulateEffect, VignettingDarkensTheCornersOnly) {
  const cv::Mat frame = Take({"--vignetting", "40"});
  for (const cv::Point& corner :
       {cv::Point(0, 0), cv::Point(199, 0), cv::Point(0, 99), cv::Point(199, 99)}) {
    EXPECT_NEAR(frame.at<cv::Vec3b>(corner)[1], 60, 1) << corner;
  }
  EXPECT_EQ(frame.at<cv::Vec3b>(50, 100)[1], 100);
  // The middle of the upper edge: a fifth of the way to the corner, squared.
  EXPECT_NEAR(frame.at<cv::Vec3b>(0, 100)[1], 92, 1);
}

TEST_F(SimulateEffect, ExposureChangesWholeFramesWithinItsRange) {
  double least = 255;
  double most = 0;
  for (int frame = 1; frame <= 5; ++frame) {
    const cv::Mat image = Take({"--exposure-jitter", "20"}, frame);
    EXPECT_TRUE(SamePixels(image, cv::Mat(image.size(), CV_8UC3, cv::Scalar::all(image.data[0]))));
    least = std::min(least, Mean(image));
    most = std::max(most, Mean(image));
  }
  EXPECT_GE(least, 80.0);
  EXPECT_LE(most, 120.0);
  EXPECT_GT(most - least, 2.0);
}

TEST_F(SimulateEffect, DarknessEndsAtOne) {
  const cv::Mat frame = Take({"--vignetting", "95", "--noise", "100"});
  double least = 0;
  cv::minMaxLoc(frame.reshape(1), &least);
  EXPECT_EQ(least, 1.0);
}

TEST(SimulateBlur, SeesTheSceneAroundTheFrame) {
  TemporaryFolder folder;
  const auto truth = Simulate(
      folder / "pass", {"-n", "4", "--blur", "2", "--scene", folder / "scene.png", "--step", "50"});
  cv::Mat blurred;
  cv::GaussianBlur(cv::imread(folder / "scene.png"), blurred, cv::Size(), 2, 2);
  for (const TruthLine& line : truth) {
    const cv::Mat frame = cv::imread(folder / "pass/" + line.file);
    EXPECT_TRUE(SamePixels(frame, blurred(cv::Rect(line.x, line.y, 200, 100)))) << line.file;
  }
}

TEST(SimulateSlide, HasContentEverywhereAndNoBlack) {
  TemporaryFolder folder;
  Simulate(folder / "pass", {"-n", "36", "--step", "60", "--scene", folder / "scene.png"});
  const cv::Mat scene = cv::imread(folder / "scene.png");
  double least = 0;
  cv::minMaxLoc(scene.reshape(1), &least);
  EXPECT_GE(least, 16.0);
  for (int y = 0; y + 100 <= scene.rows; y += 100) {
    for (int x = 0; x + 100 <= scene.cols; x += 100) {
      cv::Scalar mean, deviation;
      cv::meanStdDev(scene(cv::Rect(x, y, 100, 100)), mean, deviation);
      EXPECT_GT(deviation[1], 5.0) << x << ", " << y;
    }
  }
}

TEST(SimulateSlide, ALargerSceneShowsMoreOfTheSameSlide) {
  TemporaryFolder folder;
  Simulate(folder / "a", {"-n", "1", "--scene", folder / "small.png", "--seed", "4"});
  Simulate(folder / "b", {"-n", "9", "--scene", folder / "large.png", "--seed", "4"});
  const cv::Mat small = cv::imread(folder / "small.png");
  const cv::Mat large = cv::imread(folder / "large.png");
  ASSERT_GT(large.cols, small.cols);
  EXPECT_TRUE(SamePixels(small, large(cv::Rect(cv::Point(), small.size()))));
}

// --- output folder ----------------------------------------------------------------

TEST(SimulateFolder, IsMadeWithItsParents) {
  TemporaryFolder folder;
  EXPECT_EQ(Simulate(folder / "a/b/ü c", {"-n", "1"}).size(), 1U);
}

TEST(SimulateFolder, IsRefusedWhenNotEmpty) {
  TemporaryFolder folder;
  std::ofstream(folder / "mine.txt") << "precious";
  const Outcome outcome = RunProgram({"simulate", "-o", folder.Path(), "-n", "1"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("not empty"), std::string::npos) << outcome.err;
  EXPECT_NE(outcome.err.find("--force"), std::string::npos) << outcome.err;
  EXPECT_EQ(ListFolder(folder.Path()), (Strings{"mine.txt"}));
}

TEST(SimulateFolder, ForceReplacesAnEarlierSimulationAndNothingElse) {
  TemporaryFolder folder;
  Simulate(folder.Path(), {"-n", "5", "--jpeg-quality", "90"});
  std::ofstream(folder / "mine.txt") << "precious";
  std::ofstream(folder / "frame_final.png") << "mine too";
  Simulate(folder.Path(), {"-n", "2", "--force"});
  EXPECT_EQ(ListFolder(folder.Path()), (Strings{"frame_0001.png", "frame_0002.png",
                                                "frame_final.png", "mine.txt", "truth.csv"}));
  EXPECT_EQ(ReadFile(folder / "mine.txt"), "precious");
}

TEST(SimulateFolder, AFileInItsPlaceIsNamed) {
  TemporaryFolder folder;
  std::ofstream(folder / "taken") << "x";
  const Outcome outcome = RunProgram({"simulate", "-o", folder / "taken", "-n", "1"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find(folder / "taken"), std::string::npos) << outcome.err;
}

TEST(SimulateErrors, APictureTooSmallForThePathNamesBothSizes) {
  TemporaryFolder folder;
  cv::imwrite(folder / "small.png", cv::Mat(150, 300, CV_8UC3, cv::Scalar::all(9)));
  const Outcome outcome = RunProgram({"simulate", "-o", folder / "pass", "--size", "200x100", "-n",
                                      "9", "--image", folder / "small.png", "--step", "50"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("400x200"), std::string::npos) << outcome.err;
  EXPECT_NE(outcome.err.find("300x150"), std::string::npos) << outcome.err;
  EXPECT_FALSE(fs::exists(folder / "pass")) << "nothing is made before the input is known to do";
}

TEST(SimulateErrors, AFileThatIsNoPictureIsNamed) {
  TemporaryFolder folder;
  std::ofstream(folder / "text.png") << "no picture";
  const Outcome outcome =
      RunProgram({"simulate", "-o", folder / "pass", "--image", folder / "text.png"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find(folder / "text.png"), std::string::npos) << outcome.err;
}

TEST(SimulateErrors, AMissingPictureIsWrongInput) {
  TemporaryFolder folder;
  const Outcome outcome =
      RunProgram({"simulate", "-o", folder / "pass", "--image", folder / "missing.png"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("missing.png': there is no such file"), std::string::npos)
      << outcome.err;
}

TEST(SimulateErrors, ASceneOfAnUnknownFormatIsRefusedBeforeTheWork) {
  TemporaryFolder folder;
  const Outcome outcome =
      RunProgram({"simulate", "-o", folder / "pass", "-n", "1", "--scene", folder / "scene.xyz"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find(".xyz"), std::string::npos) << outcome.err;
  EXPECT_FALSE(fs::exists(folder / "pass"));
}

TEST(SimulateErrors, AnEnormousSlideIsRefused) {
  TemporaryFolder folder;
  const Outcome outcome = RunProgram(
      {"simulate", "-o", folder / "pass", "-n", "30000", "--size", "16000x16000", "--step", "100"});
  EXPECT_EQ(outcome.exitCode, 1);
  // 174 x 173 frames and the margins.
  EXPECT_NE(outcome.err.find("2784032x2768032 pixels and take 23119 GB of memory"),
            std::string::npos)
      << outcome.err;
  EXPECT_FALSE(fs::exists(folder / "pass"));
}

struct UsageRow {
  const char* name;
  Strings options;
  const char* mentions;
};

class SimulateUsage : public testing::TestWithParam<UsageRow> {};

TEST_P(SimulateUsage, IsRefused) {
  TemporaryFolder folder;
  Strings arguments = {"simulate", "-o", folder / "pass"};
  arguments.insert(arguments.end(), GetParam().options.begin(), GetParam().options.end());
  const Outcome outcome = RunProgram(arguments);
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_NE(outcome.err.find(GetParam().mentions), std::string::npos) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_FALSE(fs::exists(folder / "pass"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SimulateUsage,
    testing::Values(
        UsageRow{"count_zero", {"-n", "0"}, "--count"},
        UsageRow{"count_text", {"-n", "many"}, "--count"},
        UsageRow{"step_zero", {"--step", "0"}, "--step"},
        UsageRow{"step_nan", {"--step", "nan"}, "--step"},
        UsageRow{"noise_negative", {"--noise", "-1"}, "--noise"},
        UsageRow{"noise_large", {"--noise", "101"}, "0 to 100"},
        UsageRow{"vignetting", {"--vignetting", "100"}, "--vignetting"},
        UsageRow{"exposure", {"--exposure-jitter", "95"}, "--exposure-jitter"},
        UsageRow{"blur_infinite", {"--blur", "inf"}, "--blur"},
        UsageRow{"quality_zero", {"--jpeg-quality", "0"}, "--jpeg-quality"},
        UsageRow{"quality_large", {"--jpeg-quality", "101"}, "--jpeg-quality"},
        UsageRow{"size_word", {"--size", "large"}, "1280x960"},
        UsageRow{"size_half", {"--size", "640x"}, "--size"},
        UsageRow{"size_tiny", {"--size", "15x100"}, "16x16"},
        UsageRow{"size_junk", {"--size", "640x480x3"}, "--size"},
        UsageRow{"path", {"--path", "zigzag"}, "serpentine"},
        UsageRow{"direction", {"--path", "row", "--direction", "north"}, "up-right"},
        UsageRow{"direction_of_spiral", {"--path", "spiral", "--direction", "up"}, "--direction"},
        UsageRow{"columns_of_row", {"--path", "row", "--columns", "4"}, "--columns"},
        UsageRow{"jumps", {"-n", "5", "--jumps", "4"}, "at most 3"},
        UsageRow{"seed_negative", {"--seed", "-1"}, "--seed"},
        UsageRow{"seed_text", {"--seed", "luck"}, "--seed"},
        UsageRow{"unknown", {"--colour", "red"}, "--colour"}),
    [](const auto& row) { return row.param.name; });

TEST(SimulateUsage, NeedsAnOutput) {
  const Outcome outcome = RunProgram({"simulate"});
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_NE(outcome.err.find("--output"), std::string::npos) << outcome.err;
}

TEST(SimulateUsage, HelpShowsExamples) {
  const Outcome outcome = RunProgram({"simulate", "--help"});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_NE(outcome.out.find("Examples:"), std::string::npos);
}

TEST(SimulateSummary, GoesToStandardErrorAndCanBeSilenced) {
  TemporaryFolder folder;
  const Outcome outcome =
      RunProgram({"simulate", "-o", folder / "pass", "-n", "2", "--size", "64x48"});
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.err.find("2 frames of 64x48"), std::string::npos) << outcome.err;
}

}  // namespace
}  // namespace jqstitch_test

// Uneven light: estimated by `jqstitch flat`, taken out by --flat and --dark.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/running_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Strings = std::vector<std::string>;

void ExpectDone(const Outcome& outcome) {
  ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
}

// How far the light of a mosaic is from the true scene's, in grey levels.
struct LightError {
  double shading = 0;    ///< root mean square
  double borders = 0;    ///< mean step across a line where a frame ends
  double elsewhere = 0;  ///< the same for lines half a step beside
};

// The mosaic less the scene (scaled to its mean), smoothed so that shifts of a pixel and
// the fading do not count, inside what frames cover.
LightError MeasureLight(const cv::Mat& mosaic, const cv::Mat& scene, const json& report,
                        const cv::Point& firstCorner) {
  cv::Mat a, b, error, covered;
  cv::cvtColor(mosaic, a, cv::COLOR_BGR2GRAY);
  covered = a > 0;
  const cv::Point corner(report["picture"]["firstFrame"]["x"],
                         report["picture"]["firstFrame"]["y"]);
  const cv::Rect area(firstCorner - corner, mosaic.size());
  cv::cvtColor(scene(area), b, cv::COLOR_BGR2GRAY);
  a.convertTo(a, CV_64F);
  b.convertTo(b, CV_64F);
  error = a - b * (cv::mean(a, covered)[0] / cv::mean(b, covered)[0]);
  error.setTo(0, ~covered);
  cv::GaussianBlur(error, error, cv::Size(), 10.0);
  LightError result;
  result.shading = std::sqrt(cv::mean(error.mul(error), covered)[0]);
  const int width = report["frameSize"]["width"], step = width / 5;
  int lines = 0;
  for (const json& frame : report["list"]) {
    const int left = frame["corner"]["x"];
    for (const int x : {left, left + width}) {
      if (x < step || x + step >= error.cols) continue;
      const auto stepAt = [&error](int at) {
        return cv::norm(error.col(at + 10), error.col(at - 10), cv::NORM_L1) / error.rows;
      };
      result.borders += stepAt(x);
      result.elsewhere += stepAt(x + step / 2);
      ++lines;
    }
  }
  result.borders /= lines;
  result.elsewhere /= lines;
  return result;
}

class Flat : public testing::TestWithParam<const char*> {
 protected:
  void Simulate(const std::string& name, const Strings& options) {
    Strings arguments = {"simulate",
                         "-o",
                         m_folder / name,
                         "--size",
                         "400x300",
                         "--step",
                         "40",
                         "--seed",
                         "5",
                         "--scene",
                         m_folder / name + ".png",
                         "-q"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ExpectDone(RunProgram(arguments));
  }

  LightError Stitch(const std::string& name, const Strings& options) {
    Strings arguments = {GetParam(), m_folder / name,    "-o", m_folder / "mosaic.png",
                         "--report", m_folder / "r.json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    StartOptions start;
    start.environment = {{"TMPDIR", m_temporary.Path()}};
    ExpectDone(RunProgramWith(arguments, start));
    EXPECT_EQ(ListFolder(m_temporary.Path()), Strings{});
    cv::Point corner;
    char comma = 0;
    std::ifstream truth(m_folder / name + "/truth.csv");
    std::string line;
    std::getline(truth, line);
    std::getline(truth, line, ',');
    truth >> corner.x >> comma >> corner.y;
    return MeasureLight(ReadPictureFile(m_folder / "mosaic.png"),
                        ReadPictureFile(m_folder / name + ".png"), ReadJson(m_folder / "r.json"),
                        corner);
  }

  TemporaryFolder m_folder, m_temporary;
};

INSTANTIATE_TEST_SUITE_P(Jqstitch, Flat, testing::Values("live", "batch"),
                         [](const auto& parameters) { return std::string(parameters.param); });

TEST_P(Flat, TheSeamsOfAVignettingGo) {
  Simulate("even", {"-n", "30", "--path", "serpentine", "--noise", "1"});
  Simulate("dim", {"-n", "30", "--path", "serpentine", "--noise", "1", "--vignetting", "35"});
  ExpectDone(RunProgram({"flat", m_folder / "dim", "-o", m_folder / "flat.tif"}));
  const LightError even = Stitch("even", {});
  const LightError before = Stitch("dim", {});
  const LightError after = Stitch("dim", {"--flat", m_folder / "flat.tif"});
  for (const auto& [name, e] : {std::pair("even", even), {"before", before}, {"after", after}}) {
    std::printf("%s %s: shading %.2f, step at borders %.2f, elsewhere %.2f\n", GetParam(), name,
                e.shading, e.borders, e.elsewhere);
  }
  EXPECT_GT(before.shading, 4 * after.shading);
  EXPECT_GT(before.borders, 2 * after.borders);
  // What is left at the borders is what evenly lit frames show too.
  EXPECT_LT(after.borders, even.borders + 0.2);
}

TEST_P(Flat, AnEmptyFieldAndADarkFrameUndoWhatTheyShow) {
  const cv::Size size(320, 240);
  const Strings files = WriteWalk(m_folder.Path(), 3, {64, 0}, size);
  ExpectDone(RunProgram({GetParam(), files[0], files[1], files[2], "-o", m_folder / "true.png"}));
  const cv::Mat expected = ReadPictureFile(m_folder / "true.png");
  // 12 bits: dark signal of 40 to 103, light from 30 % to 100 %.
  cv::Mat dark(size, CV_16UC3), flat(size, CV_16UC3);
  const auto light = [&](int c) { return 0.3 + 0.7 * c / (size.width - 1); };
  const auto none = [](int c, int k) { return 40 + c % 22 + 20 * k; };
  for (int r = 0; r < size.height; ++r) {
    for (int c = 0; c < size.width; ++c) {
      for (int k = 0; k < 3; ++k) {
        dark.ptr<std::uint16_t>(r)[3 * c + k] = static_cast<std::uint16_t>(none(c, k));
        flat.ptr<std::uint16_t>(r)[3 * c + k] =
            static_cast<std::uint16_t>(none(c, k) + std::lround(3900 * light(c)));
      }
    }
  }
  ASSERT_TRUE(cv::imwrite(m_folder / "dark.tif", dark));
  ASSERT_TRUE(cv::imwrite(m_folder / "flat.tif", flat));
  Strings arguments = {GetParam(),
                       "-o",
                       m_folder / "mosaic.png",
                       "--depth",
                       "12",
                       "--flat",
                       m_folder / "flat.tif",
                       "--dark",
                       m_folder / "dark.tif"};
  for (const std::string& file : files) {
    const cv::Mat frame = ReadPictureFile(file);
    cv::Mat seen(size, CV_16UC3);
    for (int r = 0; r < size.height; ++r) {
      for (int c = 0; c < size.width; ++c) {
        for (int k = 0; k < 3; ++k) {
          // The mean light is 65 %, which the correction keeps; 8 makes it mid-scale.
          const double value = (frame.ptr(r)[3 * c + k] * 16 + 8) * light(c) / 0.65;
          seen.ptr<std::uint16_t>(r)[3 * c + k] =
              static_cast<std::uint16_t>(std::min(65535.0, std::round(value) + none(c, k)));
        }
      }
    }
    arguments.push_back(file + ".tif");
    ASSERT_TRUE(cv::imwrite(arguments.back(), seen));
  }
  ExpectDone(RunProgram(arguments));
  const cv::Mat mosaic = ReadPictureFile(m_folder / "mosaic.png");
  ASSERT_EQ(mosaic.size(), expected.size());
  EXPECT_LE(cv::norm(mosaic, expected, cv::NORM_INF), 2);
  EXPECT_LT(cv::norm(mosaic, expected, cv::NORM_L1) / static_cast<double>(3 * mosaic.total()), 0.2);
}

TEST_P(Flat, WhatDoesNotFitIsRefused) {
  const Strings files = WriteWalk(m_folder.Path(), 3, {64, 0});
  cv::imwrite(m_folder / "small.png", cv::Mat(10, 20, CV_8UC1, cv::Scalar(200)));
  cv::imwrite(m_folder / "black.png", cv::Mat(240, 320, CV_8UC1, cv::Scalar(0)));
  cv::imwrite(m_folder / "light.png", cv::Mat(240, 320, CV_8UC1, cv::Scalar(200)));
  cv::imwrite(m_folder / "real.tif", cv::Mat(240, 320, CV_32FC1, cv::Scalar(0.5)));
  const std::string none = m_folder / "none.tif";
  const std::pair<Strings, std::string> rows[] = {
      {{"--flat", none}, "cannot read the flat field '" + none + "': there is no such file"},
      {{"--dark", none}, "cannot read the dark frame '" + none + "': there is no such file"},
      {{"--flat", m_folder / "small.png"}, "the first frame has 320 x 240 pixels"},
      {{"--flat", m_folder / "real.tif"}, "32-bit float samples"},
      {{"--flat", m_folder / "black.png"}, "is black"},
      {{"--flat", m_folder / "light.png", "--dark", m_folder / "small.png"}, "the sizes differ"},
      {{"--flat", m_folder / "light.png", "--dark", m_folder / "light.png"},
       "is no brighter than"}};
  for (const auto& [options, words] : rows) {
    Strings arguments = {GetParam(), files[0], files[1], files[2], "-o", m_folder / "mosaic.png"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.exitCode, 1) << words;
    EXPECT_NE(outcome.err.find(words), std::string::npos) << outcome.err;
    EXPECT_FALSE(fs::exists(m_folder / "mosaic.png"));
  }
}

TEST_P(Flat, DeadPixelsOfTheFlatFieldAreToldAndLeftAlone) {
  const Strings files = WriteWalk(m_folder.Path(), 3, {64, 0});
  ExpectDone(RunProgram({GetParam(), files[0], files[1], files[2], "-o", m_folder / "true.png"}));
  cv::Mat flat(240, 320, CV_8UC1, cv::Scalar(200));
  flat(cv::Rect(5, 7, 3, 1)).setTo(0);
  cv::imwrite(m_folder / "dead.png", flat);
  const Outcome outcome = RunProgram({GetParam(), files[0], files[1], files[2], "-o",
                                      m_folder / "mosaic.png", "--flat", m_folder / "dead.png"});
  EXPECT_NE(outcome.err.find("too dark at 3 pixels"), std::string::npos) << outcome.err;
  EXPECT_LE(cv::norm(ReadPictureFile(m_folder / "mosaic.png"),
                     ReadPictureFile(m_folder / "true.png"), cv::NORM_INF),
            1);
}

TEST(FlatCommand, GivesTheSameBytesEveryTime) {
  TemporaryFolder folder;
  ExpectDone(RunProgram({"simulate", "-o", folder / "p", "-n", "6", "--size", "200x150",
                         "--vignetting", "30", "-q"}));
  for (const char* name : {"a.tif", "b.tif"}) {
    ExpectDone(RunProgram({"flat", folder / "p", "-o", folder / name, "-q"}));
  }
  EXPECT_TRUE(ReadFile(folder / "a.tif") == ReadFile(folder / "b.tif"));
  const cv::Mat flat = ReadPictureFile(folder / "a.tif");
  EXPECT_EQ(flat.type(), CV_16UC3);
  EXPECT_EQ(flat.size(), cv::Size(200, 150));
}

TEST(FlatCommand, RefusesWhatItCannotUse) {
  TemporaryFolder folder;
  const Strings files = WriteWalk(folder.Path(), 2, {64, 0});
  cv::imwrite(folder / "small.png", cv::Mat(10, 20, CV_8UC3, cv::Scalar::all(200)));
  cv::imwrite(folder / "black.png", cv::Mat(240, 320, CV_8UC3, cv::Scalar::all(0)));
  const std::pair<std::string, std::string> rows[] = {{"small.png", "it has 20 x 10 pixels"},
                                                      {"black.png", "it is black"},
                                                      {"none.png", "no such file"}};
  for (const auto& [name, words] : rows) {
    const Outcome outcome =
        RunProgram({"flat", files[0], files[1], folder / name, "-o", folder / "flat.tif"});
    EXPECT_EQ(outcome.exitCode, 1) << name;
    EXPECT_NE(outcome.err.find(name), std::string::npos) << outcome.err;
    EXPECT_NE(outcome.err.find(words), std::string::npos) << outcome.err;
    EXPECT_FALSE(fs::exists(folder / "flat.tif"));
  }
  EXPECT_EQ(RunProgram({"flat", files[0], "-o", folder / "flat.jpg"}).exitCode, 2);
  EXPECT_EQ(RunProgram({"flat", "-o", folder / "flat.tif"}).exitCode, 2);
}

}  // namespace
}  // namespace jqstitch_test

// Samples of more than 8 bits, grey pictures, and TIFFs of several pages.
#include <gtest/gtest.h>

#include <algorithm>
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

// Temporary files of the program go to a folder of the test.
class Depth : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    for (const std::string& file : WriteWalk(m_in.Path(), 4, {64, 0})) {
      m_frames.push_back(ReadPictureFile(file));
    }
  }

  // Frames whose `bits` significant bits say the same as the 8-bit ones, with noise
  // in the low bits that the result must not depend on.
  Strings WriteDeep(int bits, const char* extension, bool grey = false) {
    cv::RNG random(bits);
    Strings files;
    for (std::size_t i = 0; i < m_frames.size(); ++i) {
      cv::Mat deep, noise;
      (grey ? Grey(i) : m_frames[i]).convertTo(deep, CV_16U, 1 << (bits - 8));
      noise.create(deep.size(), deep.type());
      random.fill(noise, cv::RNG::UNIFORM, 0, 1 << (bits - 8));
      deep += noise;
      // The depth is found by the largest sample.
      deep.ptr<std::uint16_t>(0)[0] = std::uint16_t((1 << bits) - 1);
      files.push_back(m_in / "deep" + std::to_string(i + 1) + extension);
      EXPECT_TRUE(cv::imwrite(files.back(), deep));
    }
    return files;
  }

  // What these frames are in 8 bits.
  Strings WriteFlatTwin(bool grey = false) {
    Strings files;
    for (std::size_t i = 0; i < m_frames.size(); ++i) {
      cv::Mat twin = (grey ? Grey(i) : m_frames[i]).clone();
      twin.data[0] = 255;
      files.push_back(m_in / "twin" + std::to_string(i + 1) + ".png");
      EXPECT_TRUE(cv::imwrite(files.back(), twin));
    }
    return files;
  }

  cv::Mat Grey(std::size_t i) {
    cv::Mat grey;
    cv::cvtColor(m_frames[i], grey, cv::COLOR_BGR2GRAY);
    return grey;
  }

  Outcome Run(const Strings& files, const Strings& options = {}) {
    Strings arguments = {GetParam(), "-o", m_out / "mosaic.png", "--report", m_out / "r.json"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    arguments.insert(arguments.end(), options.begin(), options.end());
    StartOptions start;
    start.environment = {{"TMPDIR", m_temporary.Path()}};
    const Outcome outcome = RunProgramWith(arguments, start);
    EXPECT_EQ(ListFolder(m_temporary.Path()), Strings{}) << "temporary files were left behind";
    return outcome;
  }

  cv::Mat Picture(const Strings& files, const Strings& options = {}) {
    const Outcome outcome = Run(files, options);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    return ReadPictureFile(m_out / "mosaic.png");
  }

  static void ExpectSame(const cv::Mat& a, const cv::Mat& b) {
    ASSERT_EQ(a.size(), b.size());
    ASSERT_EQ(a.type(), b.type());
    EXPECT_EQ(cv::norm(a, b, cv::NORM_INF), 0);
  }

  TemporaryFolder m_in, m_out, m_temporary;
  std::vector<cv::Mat> m_frames;
};

INSTANTIATE_TEST_SUITE_P(Jqstitch, Depth, testing::Values("live", "batch"),
                         [](const auto& parameters) { return std::string(parameters.param); });

TEST_P(Depth, IsFoundInTheFirstFrame) {
  const cv::Mat expected = Picture(WriteFlatTwin());
  for (const char* extension : {".png", ".tif"}) {
    for (int bits : {10, 12, 14, 16}) {
      SCOPED_TRACE(std::to_string(bits) + extension);
      ExpectSame(Picture(WriteDeep(bits, extension)), expected);
      const json samples = ReadJson(m_out / "r.json")["samples"];
      EXPECT_EQ(samples["stored"], 16);
      EXPECT_EQ(samples["bits"], bits);
      EXPECT_EQ(samples["found"], true);
      EXPECT_EQ(samples["saturatedFrames"], 0);
    }
  }
}

TEST_P(Depth, IsToldInTheSummary) {
  EXPECT_EQ(Run(WriteFlatTwin()).err.find("significant"), std::string::npos);
  const Strings files = WriteDeep(12, ".tif");
  EXPECT_NE(Run(files).err.find("Samples of 16 bits, 12 of them significant, as the first frame"),
            std::string::npos);
  EXPECT_NE(Run(files, {"--depth", "12"}).err.find("12 of them significant, as --depth says"),
            std::string::npos);
}

TEST_P(Depth, SamplesAboveItSaturateAndAreToldOnce) {
  const Strings files = WriteDeep(12, ".png");
  // The first frame shows 10 bits only; all others have more.
  cv::Mat dim = ReadPictureFile(files[0]);
  dim /= 5;
  ASSERT_TRUE(cv::imwrite(files[0], dim));
  const Outcome outcome = Run(files);
  EXPECT_EQ(ReadJson(m_out / "r.json")["samples"]["bits"], 10);
  EXPECT_EQ(ReadJson(m_out / "r.json")["samples"]["saturatedFrames"], 3);
  const std::string words = "samples in 3 frames; give the camera's --depth";
  EXPECT_NE(outcome.err.find(words), std::string::npos) << outcome.err;
  EXPECT_EQ(outcome.err.find(words, outcome.err.find(words) + 1), std::string::npos);
  EXPECT_EQ(Run(files, {"--depth", "12"}).err.find("cut off"), std::string::npos);
}

TEST_P(Depth, ThatIsGivenIsTaken) {
  const Strings twin = WriteFlatTwin();
  const cv::Mat expected = Picture(twin);
  // 10 significant bits, taken for 12: a quarter of the light.
  const Strings files = WriteDeep(10, ".png");
  const Outcome outcome = Run(files, {"--depth", "12"});
  ASSERT_TRUE(fs::exists(m_out / "mosaic.png")) << outcome.err;
  EXPECT_NEAR(cv::mean(ReadPictureFile(m_out / "mosaic.png"))[0], cv::mean(expected)[0] / 4, 1.0);
  ExpectSame(Picture(files, {"--depth", "10"}), expected);
  ExpectSame(Picture(twin, {"--depth", "12"}), expected);  // nothing to do for 8-bit files
}

TEST_P(Depth, OtherNumbersAreWrongUsage) {
  for (const char* depth : {"9", "32", "0", "-8", "deep", ""}) {
    const Outcome outcome = Run(WriteFlatTwin(), {"--depth", depth});
    EXPECT_EQ(outcome.exitCode, 2) << depth;
    EXPECT_NE(outcome.err.find("--depth"), std::string::npos) << outcome.err;
  }
}

TEST_P(Depth, GreyInGreyOut) {
  const cv::Mat expected = Picture(WriteFlatTwin(true));
  ASSERT_EQ(expected.type(), CV_8UC1);
  for (int bits : {12, 16}) ExpectSame(Picture(WriteDeep(bits, ".tif", true)), expected);
  EXPECT_EQ(ReadJson(m_out / "r.json")["samples"]["grey"], true);

  // The same pixels in files of three channels give the same picture in three.
  Strings colour;
  for (const std::string& file : WriteFlatTwin(true)) {
    cv::Mat three;
    cv::cvtColor(ReadPictureFile(file), three, cv::COLOR_GRAY2BGR);
    colour.push_back(m_in / "colour" + fs::path(file).filename().string());
    ASSERT_TRUE(cv::imwrite(colour.back(), three));
  }
  const cv::Mat inColour = Picture(colour);
  ASSERT_EQ(inColour.type(), CV_8UC3);
  std::vector<cv::Mat> channels;
  cv::split(inColour, channels);
  for (const cv::Mat& channel : channels) ExpectSame(channel, expected);

  // A background of another colour needs three channels, a grey one does not.
  const Strings grey = WriteFlatTwin(true);
  EXPECT_EQ(Picture(grey, {"--background", "9,9,9"}).type(), CV_8UC1);
  EXPECT_EQ(Picture(grey, {"--background", "9,8,9"}).type(), CV_8UC3);
  EXPECT_EQ(Picture({grey[0], grey[1], WriteFlatTwin(false)[2]}).type(), CV_8UC3) << "mixed";
}

TEST_P(Depth, EveryPageOfATiffIsAFrame) {
  const cv::Mat expected = Picture(WriteFlatTwin());
  std::vector<cv::Mat> pages;
  for (const std::string& file : WriteDeep(12, ".png")) pages.push_back(ReadPictureFile(file));
  ASSERT_TRUE(cv::imwritemulti(m_in / "stack.tif", pages));
  ExpectSame(Picture({m_in / "stack.tif"}), expected);
  const json list = ReadJson(m_out / "r.json")["list"];
  ASSERT_EQ(list.size(), 4u);
  EXPECT_EQ(list[2]["name"], m_in / "stack.tif" + " page 3");
  EXPECT_EQ(list[2]["number"], 3);
}

TEST_P(Depth, PagesOfEightBitsToo) {
  Strings twin = WriteFlatTwin();
  const cv::Mat expected = Picture(twin);
  std::vector<cv::Mat> pages;
  for (std::size_t i = 1; i < twin.size(); ++i) pages.push_back(ReadPictureFile(twin[i]));
  ASSERT_TRUE(cv::imwritemulti(m_in / "stack.tif", pages));
  ExpectSame(Picture({twin[0], m_in / "stack.tif"}), expected);
}

TEST_P(Depth, AnUnreadablePageIsNamed) {
  const std::vector<cv::Mat> pages = {m_frames[0], m_frames[1], m_frames[2]};
  ASSERT_TRUE(cv::imwritemulti(m_in / "stack.tif", pages));
  fs::resize_file(m_in / "stack.tif", fs::file_size(m_in / "stack.tif") - 40);
  const Outcome outcome = Run({m_in / "stack.tif"});
  const std::string said = outcome.err + ReadJson(m_out / "r.json").dump();
  EXPECT_NE(said.find("stack.tif page 3"), std::string::npos) << said;
  EXPECT_NE(said.find("this page is damaged or cut short"), std::string::npos) << said;
  EXPECT_EQ(outcome.exitCode, std::string(GetParam()) == "live" ? 3 : 1);
}

TEST_P(Depth, FloatPicturesAreRefusedByTheirName) {
  Strings files = WriteFlatTwin();
  cv::Mat real;
  m_frames[1].convertTo(real, CV_32F, 1.0 / 255);
  files[1] = m_in / "real.tif";
  ASSERT_TRUE(cv::imwrite(files[1], real));
  const Outcome outcome = Run(files);
  EXPECT_NE(outcome.err.find("32-bit float samples"), std::string::npos) << outcome.err;
  EXPECT_EQ(outcome.exitCode, std::string(GetParam()) == "live" ? 3 : 1);
}

TEST(InspectDepth, DeepPicturesAreInspectedAsTheirEightBitTwins) {
  const TemporaryFolder folder;
  const Strings files = WriteWalk(folder.Path(), 2, {64, 0});
  Strings deep;
  for (const std::string& file : files) {
    cv::Mat picture;
    ReadPictureFile(file).convertTo(picture, CV_16U, 16);
    deep.push_back(file + ".tif");
    ASSERT_TRUE(cv::imwrite(deep.back(), picture));
  }
  const Outcome plain = RunProgram({"inspect", files[0], files[1], "-o", folder / "a.png"});
  const Outcome outcome = RunProgram({"inspect", deep[0], deep[1], "-o", folder / "b.png"});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(outcome.out.substr(0, plain.out.size()), plain.out);
  EXPECT_NE(outcome.out.find("12 of them significant"), std::string::npos) << outcome.out;
}

}  // namespace
}  // namespace jqstitch_test

// What can be given as input, and what is said about input that cannot be used.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/videoio.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/running_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Strings = std::vector<std::string>;

class Inputs : public testing::TestWithParam<const char*> {
 protected:
  Outcome Run(const Strings& input, const StartOptions& options = {}) {
    Strings arguments = {GetParam(), "-o", m_out / "mosaic.png", "--report", m_out / "report.json"};
    arguments.insert(arguments.end(), input.begin(), input.end());
    return RunProgramWith(arguments, options);
  }

  // The run is refused with this text, and nothing is written.
  void ExpectRefused(const Strings& input, const std::string& text) {
    const Outcome outcome = Run(input);
    EXPECT_EQ(outcome.exitCode, 1) << outcome.err;
    EXPECT_NE(outcome.err.find(text), std::string::npos) << text << "\nin\n" << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_FALSE(fs::exists(m_out / "mosaic.png"));
    EXPECT_TRUE(TemporaryFilesIn(m_out.Path()).empty());
  }

  Strings NamesInReport() {
    Strings names;
    const json report = ReadJson(m_out / "report.json");
    for (const json& frame : report["list"]) {
      names.push_back(fs::path(std::string(frame["name"])).filename().string());
    }
    return names;
  }

  TemporaryFolder m_in, m_out;
};

INSTANTIATE_TEST_SUITE_P(Jqstitch, Inputs, testing::Values("live", "batch"),
                         [](const auto& parameters) { return std::string(parameters.param); });

TEST_P(Inputs, AFolderIsTakenInNaturalOrder) {
  WriteWalk(m_in.Path(), 11, {64, 0});
  std::ofstream(m_in / "notes.txt") << "no picture";
  std::ofstream(m_in / ".hidden.png") << "no picture";
  fs::create_directory(m_in / "deeper");
  const Outcome outcome = Run({m_in.Path()});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(NamesInReport(), (Strings{"f1.png", "f2.png", "f3.png", "f4.png", "f5.png", "f6.png",
                                      "f7.png", "f8.png", "f9.png", "f10.png", "f11.png"}));
}

TEST_P(Inputs, FilesAreTakenAsGiven) {
  const Strings files = WriteWalk(m_in.Path(), 3, {64, 0});
  EXPECT_EQ(Run({files[2], files[1], files[0]}).exitCode, 0);
  EXPECT_EQ(NamesInReport(), (Strings{"f3.png", "f2.png", "f1.png"}));
}

TEST_P(Inputs, PathsNeedNotBeAscii) {
  const std::string folder = m_in / "Pr\xc3\xa4parat \xe2\x82\xac \xe7\xbb\x84\xe7\xbb\x87";
  fs::create_directory(folder);
  WriteWalk(folder, 3, {64, 0});
  for (const char* locale : {"C", "C.UTF-8", "POSIX"}) {
    StartOptions options;
    options.environment = {{"LC_ALL", locale}, {"LANG", locale}};
    const Outcome outcome = Run({folder}, options);
    EXPECT_EQ(outcome.exitCode, 0) << locale << "\n" << outcome.err;
    EXPECT_EQ(NamesInReport().size(), 3u);
  }
}

TEST_P(Inputs, VeryLongPathsWork) {
  std::string folder = m_in.Path();
  while (folder.size() < 3500) {
    folder += "/" + std::string(200, 'd');
    fs::create_directory(folder);
  }
  WriteWalk(folder, 3, {64, 0});
  EXPECT_EQ(Run({folder}).exitCode, 0);
}

TEST_P(Inputs, APathTooLongForTheSystemIsRefused) {
  ExpectRefused({m_in / std::string(5000, 'x') + ".png"}, "File name too long");
}

TEST_P(Inputs, AnEmptyFolderIsRefused) {
  ExpectRefused({m_in.Path()}, "'" + m_in.Path() + "' holds no pictures");
}

TEST_P(Inputs, AFolderOfFoldersSaysSo) {
  fs::create_directory(m_in / "a");
  ExpectRefused({m_in.Path()}, "name a subfolder");
}

TEST_P(Inputs, AMissingFileIsNamed) {
  ExpectRefused({m_in / "none.png"}, "none.png");
  ExpectRefused({m_in / "none.png"}, "there is no such file");
}

TEST_P(Inputs, APipeIsRefusedWithoutWaitingForIt) {
  ASSERT_EQ(mkfifo((m_in / "pipe.png").c_str(), 0600), 0);
  ExpectRefused({m_in / "pipe.png"}, "it is a pipe, not a file");
}

TEST_P(Inputs, AnEmptyFileIsRefused) {
  std::ofstream(m_in / "zero.png");
  ExpectRefused({m_in / "zero.png"}, "the file is empty");
}

TEST_P(Inputs, AnInputIsNeverOverwritten) {
  const Strings files = WriteWalk(m_in.Path(), 3, {64, 0});
  const std::string before = ReadFile(files[1]);
  for (const Strings& input : {files, Strings{m_in.Path()}}) {
    Strings arguments = {GetParam(), "-o", files[1]};
    arguments.insert(arguments.end(), input.begin(), input.end());
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.err.find("would be overwritten"), std::string::npos) << outcome.err;
    EXPECT_TRUE(ReadFile(files[1]) == before);
  }
}

TEST_P(Inputs, ThePictureOfAnEarlierRunIsNoFrame) {
  WriteWalk(m_in.Path(), 3, {64, 0});
  for (int run = 0; run < 2; ++run) {
    EXPECT_EQ(RunProgram({GetParam(), m_in.Path(), "-o", m_in / "f9.png", "--report",
                          m_out / "report.json"})
                  .exitCode,
              0);
    EXPECT_EQ(NamesInReport(), (Strings{"f1.png", "f2.png", "f3.png"}));
  }
}

class BatchInputs : public Inputs {};
INSTANTIATE_TEST_SUITE_P(Jqstitch, BatchInputs, testing::Values("batch"));

TEST_P(BatchInputs, AListNamesFilesAlsoOnStandardInput) {
  const Strings files = WriteWalk(m_in.Path(), 3, {64, 0});
  const std::string list = files[2] + "\n\n" + files[1] + "\r\n" + files[0];
  std::ofstream(m_in / "list.txt") << list;
  EXPECT_EQ(Run({"--list", m_in / "list.txt"}).exitCode, 0);
  EXPECT_EQ(NamesInReport(), (Strings{"f3.png", "f2.png", "f1.png"}));
  StartOptions options;
  options.input = list;
  EXPECT_EQ(Run({"--list", "-"}, options).exitCode, 0);
  EXPECT_EQ(NamesInReport(), (Strings{"f3.png", "f2.png", "f1.png"}));
  EXPECT_EQ(Run({"--natural", "--list", "-"}, options).exitCode, 0);
  EXPECT_EQ(NamesInReport(), (Strings{"f1.png", "f2.png", "f3.png"}));
}

TEST_P(BatchInputs, AListThatCannotBeReadIsNamed) {
  ExpectRefused({"--list", m_in / "none.txt"}, "cannot read the list '" + (m_in / "none.txt"));
  ExpectRefused({"--list", m_in.Path()}, "it is a folder");
  ExpectRefused({"--list", "-"}, "standard input names no files");
}

TEST_P(BatchInputs, EveryBadFileIsNamedAndNothingIsStitched) {
  const Strings files = WriteWalk(m_in.Path(), 6, {64, 0});
  cv::imwrite(files[1], cv::Mat(100, 200, CV_8UC3, cv::Scalar::all(90)));
  std::ofstream(files[3], std::ios::binary) << ReadFile(files[2]).substr(0, 70);
  const Outcome outcome = Run({m_in.Path()});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find(files[1] + ": size differs: 200 x 100 pixels instead of 320 x 240"),
            std::string::npos)
      << outcome.err;
  EXPECT_NE(outcome.err.find(files[3] + ": unreadable: it is damaged or cut short"),
            std::string::npos)
      << outcome.err;
  EXPECT_NE(outcome.err.find("--skip-bad"), std::string::npos);
  EXPECT_FALSE(fs::exists(m_out / "mosaic.png"));
  // Quiet does not hide what is wrong.
  EXPECT_NE(Run({m_in.Path(), "--quiet"}).err.find("size differs"), std::string::npos);

  const Outcome skipped = Run({m_in.Path(), "--skip-bad"});
  EXPECT_EQ(skipped.exitCode, 3) << skipped.err;
  const json list = ReadJson(m_out / "report.json")["list"];
  ASSERT_EQ(list.size(), 6u);
  EXPECT_EQ(list[1]["verdict"], "size differs");
  EXPECT_EQ(list[3]["verdict"], "unreadable");
  for (int placed : {0, 2, 4, 5}) EXPECT_EQ(list[placed]["verdict"], "placed") << placed;
}

TEST_P(BatchInputs, TheSizeOfMostFilesIsTheRightOne) {
  const Strings files = WriteWalk(m_in.Path(), 4, {64, 0});
  cv::imwrite(files[0], cv::Mat(100, 200, CV_8UC3, cv::Scalar::all(90)));
  const Outcome outcome = Run(files);
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find(files[0] + ": size differs"), std::string::npos) << outcome.err;
  EXPECT_EQ(outcome.err.find(files[1] + ": size differs"), std::string::npos) << outcome.err;
}

TEST_P(BatchInputs, ANameThatIsNoUtf8IsRefusedByName) {
  const Strings files = WriteWalk(m_in.Path(), 2, {64, 0});
  fs::rename(files[1], m_in / "caf\xe9.png");
  const Outcome outcome = Run({files[0], m_in / "caf\xe9.png"});
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("its name is not valid UTF-8"), std::string::npos) << outcome.err;
}

TEST_P(BatchInputs, AWildcardsOrderIsPointedOut) {
  const Strings files = WriteWalk(m_in.Path(), 10, {64, 0});
  Strings byBytes = files;
  std::sort(byBytes.begin(), byBytes.end());
  EXPECT_NE(Run(byBytes).err.find("--natural"), std::string::npos);
  EXPECT_EQ(Run(files).err.find("--natural"), std::string::npos);
}

TEST_P(BatchInputs, OneUnreadableFileIsWrongInput) {
  const Strings files = WriteWalk(m_in.Path(), 1, {0, 0});
  const std::string whole = ReadFile(files[0]);
  std::ofstream(files[0], std::ios::binary) << whole.substr(0, 300);
  ExpectRefused(files, "f1.png: unreadable: it is damaged or cut short");
  ExpectRefused({files[0], "--skip-bad"}, "unreadable");
}

TEST_P(BatchInputs, APictureIsNoList) {
  const Strings files = WriteWalk(m_in.Path(), 2, {64, 0});
  ExpectRefused({"--list", files[0]}, "it is a picture; a list is a text");
}

class LiveInputs : public Inputs {};
INSTANTIATE_TEST_SUITE_P(Jqstitch, LiveInputs, testing::Values("live"));

TEST_P(LiveInputs, AVideoIsTakenFrameByFrame) {
  const std::string video = m_in / "pass.avi";
  {
    cv::VideoWriter writer(video, cv::VideoWriter::fourcc('M', 'J', 'P', 'G'), 10, {320, 240});
    if (!writer.isOpened()) GTEST_SKIP() << "no video encoder";
    for (const std::string& file : WriteWalk(m_in.Path(), 6, {64, 0})) {
      writer.write(ReadPictureFile(file));
    }
  }
  const Outcome outcome = Run({video});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(NamesInReport(),
            (Strings{"frame 1", "frame 2", "frame 3", "frame 4", "frame 5", "frame 6"}));
  EXPECT_NEAR(ReadPictureFile(m_out / "mosaic.png").cols, 320 + 5 * 64, 12);
}

TEST_P(LiveInputs, AVideoThatEndsEarlyIsTold) {
  const std::string video = m_in / "pass.avi";
  {
    cv::VideoWriter writer(video, cv::VideoWriter::fourcc('M', 'J', 'P', 'G'), 10, {320, 240});
    if (!writer.isOpened()) GTEST_SKIP() << "no video encoder";
    for (const std::string& file : WriteWalk(m_in.Path(), 12, {64, 0})) {
      writer.write(ReadPictureFile(file));
    }
  }
  const std::string whole = ReadFile(video);
  std::ofstream(video, std::ios::binary) << whole.substr(0, whole.size() / 2);
  const Outcome outcome = Run({video});
  EXPECT_EQ(outcome.exitCode, 3) << outcome.err;
  EXPECT_NE(outcome.err.find(" of the 12 frames that it announces"), std::string::npos)
      << outcome.err;
  const json report = ReadJson(m_out / "report.json");
  EXPECT_EQ(report["endedEarly"]["announced"], 12);
  EXPECT_LT(int(report["endedEarly"]["given"]), 11);

  // Cut right behind its header it gives no frame at all.
  fs::remove(m_out / "mosaic.png");
  fs::remove(m_out / "report.json");
  const std::size_t data = whole.find("movi");
  ASSERT_NE(data, std::string::npos);
  std::ofstream(video, std::ios::binary) << whole.substr(0, data + 4);
  EXPECT_EQ(Run({video}).exitCode, 1);
}

TEST_P(Inputs, APictureBombIsRefusedByItsHeader) {
  // A PNG of some bytes that announces a thousand million pixels.
  const Strings files = WriteWalk(m_in.Path(), 2, {64, 0});
  const char header[] = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x7d\0\0\0\x7d\0\x08\2\0\0\0";
  std::ofstream(m_in / "bomb.png", std::ios::binary).write(header, sizeof header - 1);
  const Outcome bomb = Run({files[0], m_in / "bomb.png", files[1]});
  EXPECT_NE(bomb.err.find("its header announces 32000 x 32000 pixels, more than the 400000000"),
            std::string::npos)
      << bomb.err;
  EXPECT_EQ(bomb.exitCode, std::string(GetParam()) == "live" ? 3 : 1);

  // The limit counts for ordinary pictures, too: 320 x 240 = 76800.
  EXPECT_EQ(Run({files[0], files[1], "--max-pixels", "76800"}).exitCode, 0);
  const Outcome refused = Run({files[0], files[1], "--max-pixels", "76799"});
  EXPECT_EQ(refused.exitCode, 1) << refused.err;
  EXPECT_NE(refused.err.find("--max-pixels"), std::string::npos);
}

// Each page has a size of its own: here the second is larger than the first.
TEST_P(Inputs, EveryPageIsHeldAgainstTheLimit) {
  const cv::Mat small = ReadPictureFile(WriteWalk(m_in.Path(), 1, {64, 0})[0]);
  cv::Mat large;
  cv::copyMakeBorder(small, large, 0, 8, 0, 0, cv::BORDER_REPLICATE);
  ASSERT_TRUE(cv::imwritemulti(m_in / "stack.tif", std::vector<cv::Mat>{small, large, small}));
  const Outcome outcome = Run({m_in / "stack.tif", "--max-pixels", "76800"});
  EXPECT_NE(outcome.err.find("its header announces 320 x 248 pixels, more than the 76800"),
            std::string::npos)
      << outcome.err;
}

TEST_P(LiveInputs, WhatIsNeitherPictureNorVideoIsRefused) {
  std::ofstream(m_in / "text.csv") << "a,b\n1,2\n";
  ExpectRefused({m_in / "text.csv"}, "it is neither a picture nor a video");
}

TEST_P(LiveInputs, AMissingCameraIsNamed) {
  ExpectRefused({"87"}, "cannot open camera 87");
}

TEST_P(LiveInputs, ANameOfWrongBytesIsFineFrameByFrame) {
  const Strings files = WriteWalk(m_in.Path(), 2, {64, 0});
  fs::rename(files[1], m_in / "caf\xe9.png");
  EXPECT_EQ(Run({files[0], m_in / "caf\xe9.png"}).exitCode, 0);
}

TEST_P(LiveInputs, NoFrameUsableIsWrongInput) {
  for (const char* name : {"a.png", "b.png"}) std::ofstream(m_in / name) << "no picture";
  ExpectRefused({m_in / "a.png", m_in / "b.png"}, "No picture: none of the 2 frames was placed");
}

}  // namespace
}  // namespace jqstitch_test

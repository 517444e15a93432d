// Where pictures and reports can be written, and that they are written whole or not
// at all.
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <opencv2/imgcodecs.hpp>

#include "jqstitch/run_program.h"
#include "jqstitch/running_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

class Outputs : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { m_frames = WriteWalk(m_in.Path(), 3, {64, 0}); }

  Outcome Run(const Strings& options, const StartOptions& start = {}) {
    Strings arguments = {GetParam(), m_in.Path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunProgramWith(arguments, start);
  }

  // Refused before any frame is looked at: no summary, no event of a frame.
  void ExpectRefusedAtOnce(const Strings& options, const std::string& text) {
    Strings arguments = options;
    arguments.push_back("--json");
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, 1) << outcome.err;
    EXPECT_NE(outcome.err.find(text), std::string::npos) << text << "\nin\n" << outcome.err;
    EXPECT_TRUE(EventsOf(outcome.out, "frame").empty());
    EXPECT_EQ(EventsOf(outcome.out, "error").size(), 1u);
  }

  TemporaryFolder m_in, m_out;
  Strings m_frames;
};

INSTANTIATE_TEST_SUITE_P(Jqstitch, Outputs, testing::Values("live", "batch"),
                         [](const auto& parameters) { return std::string(parameters.param); });

TEST_P(Outputs, TheExtensionChoosesTheFormat) {
  for (const char* extension : {".png", ".jpg", ".JPEG", ".bmp", ".tif", ".ppm", ".webp"}) {
    const std::string path = m_out / ("mosaic" + std::string(extension));
    EXPECT_EQ(Run({"-o", path}).exitCode, 0);
    EXPECT_NEAR(ReadPictureFile(path).cols, 320 + 2 * 64, 4) << extension;
  }
  EXPECT_TRUE(TemporaryFilesIn(m_out.Path()).empty());
}

TEST_P(Outputs, AFormatThatCannotHoldThePictureIsRefusedAtOnce) {
  ExpectRefusedAtOnce({"-o", m_out / "mosaic.xyz"}, "use .png, .tif");
  ExpectRefusedAtOnce({"-o", m_out / "mosaic"}, "has no extension");
  ExpectRefusedAtOnce({"-o", m_out / "mosaic.pgm"}, "use .png, .tif");
  ExpectRefusedAtOnce({"-o", m_out / "mosaic.hdr"}, "does not keep 8-bit colour");
  EXPECT_TRUE(ListFolder(m_out.Path()).empty());
}

TEST_P(Outputs, APathThatCannotBeWrittenIsRefusedAtOnce) {
  const std::string picture = m_out / "mosaic.png";
  ExpectRefusedAtOnce({"-o", m_out / "none/mosaic.png"}, "the folder is not there");
  ExpectRefusedAtOnce({"-o", m_out.Path()}, "it is a folder");
  ExpectRefusedAtOnce({"-o", m_frames[0] + "/mosaic.png"}, "is a file, not a folder");
  ExpectRefusedAtOnce({"-o", m_out / std::string(300, 'n') + ".png"}, "choose a shorter name");
  ExpectRefusedAtOnce({"-o", picture, "--report", m_out / "none/r.json"}, "none/r.json");
  ExpectRefusedAtOnce({"-o", picture, "--truth", m_out / "none.csv"}, "cannot read the truth");
  ExpectRefusedAtOnce({"-o", picture, "--report", m_out / "a.json", "--report", m_out / "./a.json"},
                      "are one file");
  ASSERT_EQ(mkfifo((m_out / "pipe.png").c_str(), 0600), 0);
  ExpectRefusedAtOnce({"-o", m_out / "pipe.png"}, "it is not a plain file");
  EXPECT_EQ(ListFolder(m_out.Path()), (Strings{"pipe.png"}));
}

TEST_P(Outputs, AReadOnlyFolderIsRefusedAtOnce) {
  if (geteuid() == 0) {
    // Root writes everywhere but where the system itself says no.
    ExpectRefusedAtOnce({"-o", "/proc/mosaic.png"}, "cannot write '/proc/mosaic.png'");
    return;
  }
  ASSERT_EQ(chmod(m_out.Path().c_str(), 0555), 0);
  ExpectRefusedAtOnce({"-o", m_out / "mosaic.png"}, "choose a folder that you may write to");
  ASSERT_EQ(chmod(m_out.Path().c_str(), 0755), 0);
}

TEST_P(Outputs, AWriteThatFailsLeavesTheOldFile) {
  std::ofstream(m_out / "mosaic.bmp") << "old content";
  StartOptions start;
  start.largestFile = 50000;
  const Outcome outcome = Run({"-o", m_out / "mosaic.bmp"}, start);
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("cannot write '" + (m_out / "mosaic.bmp") + "': File too large"),
            std::string::npos)
      << outcome.err;
  EXPECT_EQ(ReadFile(m_out / "mosaic.bmp"), "old content");
  EXPECT_EQ(ListFolder(m_out.Path()), (Strings{"mosaic.bmp"}));
  // The last word is the failure, not the summary's "All placed".
  const std::size_t placed = outcome.err.rfind("All placed");
  const std::size_t failure = outcome.err.rfind("cannot write");
  EXPECT_TRUE(placed == std::string::npos || placed < failure) << outcome.err;
}

TEST_P(Outputs, TemporaryFilesOfADeadRunAreRemovedAndNoOthers) {
  // A process that has ended and been waited for is gone.
  const pid_t dead = fork();
  if (dead == 0) _exit(0);
  ASSERT_EQ(waitpid(dead, nullptr, 0), dead);
  const std::string ours = ".jqstitch-" + std::to_string(getpid()) + "-1.tmp.png";
  const Strings others = {ours, ".jqstitch-notes.tmp.png", ".jqstitch-12"};
  std::ofstream(m_out / (".jqstitch-" + std::to_string(dead) + "-1.tmp.png")) << "left";
  std::ofstream(m_out / (".jqstitch-" + std::to_string(dead) + "-7.tmp")) << "left";
  const std::string tiles = m_out / (".jqstitch-" + std::to_string(dead) + "-1.tmp.dzi");
  fs::create_directories(tiles + "/picture_files/0");
  std::ofstream(tiles + "/picture_files/0/0_0.png") << "left";
  for (const std::string& name : others) std::ofstream(m_out / name) << "kept";
  EXPECT_EQ(Run({"-o", m_out / "mosaic.png"}).exitCode, 0);
  Strings expected = others;
  expected.push_back("mosaic.png");
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(ListFolder(m_out.Path()), expected);
}

TEST_P(Outputs, AFullDiskLeavesTheOldFile) {
  if (mount("tmpfs", m_out.Path().c_str(), "tmpfs", 0, "size=64k") != 0) {
    GTEST_SKIP() << "mounting a small disk is not permitted here";
  }
  std::ofstream(m_out / "mosaic.bmp") << "old content";
  const Outcome outcome = Run({"-o", m_out / "mosaic.bmp"});
  const std::string left = ReadFile(m_out / "mosaic.bmp");
  const Strings names = ListFolder(m_out.Path());
  ASSERT_EQ(umount(m_out.Path().c_str()), 0);
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("free some space"), std::string::npos) << outcome.err;
  EXPECT_EQ(left, "old content");
  EXPECT_EQ(names, (Strings{"mosaic.bmp"}));
}

TEST_P(Outputs, ALinkStaysALink) {
  fs::create_directory(m_out / "real");
  fs::create_symlink("real/mosaic.png", m_out / "link.png");
  EXPECT_EQ(Run({"-o", m_out / "link.png"}).exitCode, 0);
  EXPECT_TRUE(fs::is_symlink(m_out / "link.png"));
  EXPECT_NEAR(ReadPictureFile(m_out / "real/mosaic.png").cols, 320 + 2 * 64, 4);
}

TEST_P(Outputs, PathsNeedNotBeAsciiAndMayBeLong) {
  std::string folder = m_out / "Pr\xc3\xa4parat \xe2\x82\xac";
  fs::create_directory(folder);
  while (folder.size() < 3500) {
    folder += "/" + std::string(200, 'd');
    fs::create_directory(folder);
  }
  const std::string name = std::string(247, 'n') + "\xc3\xbc.png";  // 253 of 255 bytes
  StartOptions start;
  start.environment = {{"LC_ALL", "C"}};
  const Outcome outcome = Run({"-o", folder + "/" + name, "--report", folder + "/r.html"}, start);
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(ListFolder(folder), (Strings{name, "r.html"}));
}

TEST_P(Outputs, APictureTooLargeForItsFormatIsSavedNextToIt) {
  // 17000 pixels wide: more than WebP's 16383.
  const TemporaryFolder wide;
  const Strings frames = WriteWalk(wide.Path(), 3, {3000, 0}, {12000, 100});
  Strings arguments = {GetParam(), "-o", m_out / "mosaic.webp"};
  arguments.insert(arguments.end(), frames.begin(), frames.end());
  const Outcome outcome = RunProgram(arguments);
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("WebP holds at most 16383 pixels a side"), std::string::npos)
      << outcome.err;
  EXPECT_FALSE(fs::exists(m_out / "mosaic.webp"));
  EXPECT_NEAR(ReadPictureFile(m_out / "mosaic.webp.png").cols, 18000, 4);
}

}  // namespace
}  // namespace jqstitch_test

// A batch session whose files change under its hands, and one that is stopped.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <opencv2/imgcodecs.hpp>

#include "host/run/batch_session.h"
#include "host/source/picture_reader.h"
#include "jqstitch/run_program.h"
#include "jqstitch/scene_frames.h"

namespace jqhost_test {
namespace {

namespace fs = std::filesystem;
using jqhost::Cause;
using Strings = std::vector<std::string>;

class Observer : public jqhost::RunObserver {
 public:
  void OnBegin(int total) override { totals.push_back(total); }
  void OnFrame(const jqhost::FrameResult& result, int done) override {
    if (onFrame) onFrame(result, done);
  }
  std::vector<int> totals;
  std::function<void(const jqhost::FrameResult&, int)> onFrame;
};

std::vector<jqhost::BatchFile> AsTheyAre(const Strings& paths) {
  std::vector<jqhost::BatchFile> files;
  for (const std::string& path : paths) files.push_back({path, path, std::string(), {}, {}});
  return files;
}

class BatchSessionTest : public testing::Test {
 protected:
  void SetUp() override { m_files = jqstitch_test::WriteWalk(m_folder.Path(), 5, {96, 0}); }

  void Overwrite(const std::string& path, const std::string& bytes) const {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
  }

  jqstitch_test::TemporaryFolder m_folder;
  Strings m_files;
  jqhost::StopToken m_stop;
  Observer m_observer;
};

TEST_F(BatchSessionTest, AFileDamagedDuringTheRunEndsItThere) {
  m_observer.onFrame = [&](const jqhost::FrameResult&, int done) {
    if (done == 2) Overwrite(m_files[3], "no picture");
  };
  jqhost::BatchSession session(AsTheyAre(m_files), jqhost::kMostPixels, m_stop, m_observer);
  EXPECT_TRUE(session.Run(false));
  session.CloseResults("the end");
  const auto& results = session.Results();
  EXPECT_EQ(results[2].cause, Cause::kPlaced);
  EXPECT_EQ(results[3].cause, Cause::kUnreadable);
  EXPECT_EQ(results[4].cause, Cause::kNotReached);
  ASSERT_NE(session.FailedFile(), nullptr);
  EXPECT_EQ(session.FailedFile()->name, m_files[3]);
  EXPECT_FALSE(session.FinalPicture(true).image.empty()) << "nothing stitched is lost";
}

TEST_F(BatchSessionTest, AFileDamagedDuringTheRunIsLeftOutWithSkipBad) {
  m_observer.onFrame = [&](const jqhost::FrameResult&, int done) {
    if (done == 2) Overwrite(m_files[3], "no picture");
  };
  jqhost::BatchSession session(AsTheyAre(m_files), jqhost::kMostPixels, m_stop, m_observer);
  EXPECT_TRUE(session.Run(true));
  const auto& results = session.Results();
  for (int i : {0, 1, 2, 4}) EXPECT_EQ(results[i].cause, Cause::kPlaced) << i;
  EXPECT_EQ(results[3].cause, Cause::kUnreadable);
  EXPECT_EQ(m_observer.totals, (std::vector<int>{5, 4}));

  // The same as if it had never been there.
  Strings others = m_files;
  others.erase(others.begin() + 3);
  Observer quiet;
  jqhost::BatchSession reference(AsTheyAre(others), jqhost::kMostPixels, m_stop, quiet);
  ASSERT_TRUE(reference.Run(false));
  const cv::Mat expected = reference.FinalPicture(true).image;
  const cv::Mat picture = session.FinalPicture(true).image;
  ASSERT_EQ(picture.size(), expected.size());
  EXPECT_EQ(cv::norm(picture, expected, cv::NORM_INF), 0);
}

TEST_F(BatchSessionTest, APipePutInAFilesPlaceIsNotReadAtAll) {
  m_observer.onFrame = [&](const jqhost::FrameResult&, int done) {
    if (done != 1) return;
    fs::remove(m_files[3]);
    ASSERT_EQ(mkfifo(m_files[3].c_str(), 0600), 0);
  };
  jqhost::BatchSession session(AsTheyAre(m_files), jqhost::kMostPixels, m_stop, m_observer);
  EXPECT_TRUE(session.Run(false));
  for (const auto& result : session.Results()) EXPECT_EQ(result.cause, Cause::kPlaced);
}

TEST_F(BatchSessionTest, OneUnreadableFileAloneIsNoRun) {
  const std::string path = m_folder / "cut.png";
  const std::string whole = jqstitch_test::ReadFile(m_files[0]);
  Overwrite(path, whole.substr(0, 200));
  jqhost::BatchSession session(AsTheyAre({path}), jqhost::kMostPixels, m_stop, m_observer);
  EXPECT_FALSE(session.Run(false));
  EXPECT_EQ(session.Results()[0].cause, Cause::kUnreadable);
  jqhost::BatchSession skipping(AsTheyAre({path}), jqhost::kMostPixels, m_stop, m_observer);
  EXPECT_FALSE(skipping.Run(true));
}

TEST_F(BatchSessionTest, AStopKeepsWhatHasBeenStitched) {
  m_observer.onFrame = [&](const jqhost::FrameResult&, int done) {
    if (done == 2) m_stop.Request();  // heard while the third file is stitched
  };
  jqhost::BatchSession session(AsTheyAre(m_files), jqhost::kMostPixels, m_stop, m_observer);
  EXPECT_TRUE(session.Run(false));
  EXPECT_TRUE(session.Stopped());
  session.CloseResults("stopped");
  EXPECT_EQ(session.Results()[2].cause, Cause::kPlaced);
  EXPECT_EQ(session.Results()[3].cause, Cause::kNotReached);
  EXPECT_EQ(session.FinalPicture(true).image.size(), cv::Size(320 + 2 * 96, 240));
}

}  // namespace
}  // namespace jqhost_test

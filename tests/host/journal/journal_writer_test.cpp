// The writing of a journal: nothing is dropped, nothing holds the run up for long, and what
// cannot be written is told.
#include <gtest/gtest.h>

#include <filesystem>

#include "host/input_error.h"
#include "host/journal/recorded_run.h"
#include "host/journal/recorded_scene.h"

namespace jqhost_test {
namespace {

namespace fs = std::filesystem;
using jqhost::JournalFolder;
using jqhost::JournalHealth;
using jqhost::JournalPace;
using jqhost::JournalWriter;

std::unique_ptr<JournalFolder> NewFolder(const std::string& path) {
  return std::make_unique<JournalFolder>(
      path, jqhost::MakeHeader(jqhost::StitchSettings(), jqhost::PreparationSettings(), 1, {}));
}

// Entries of frames that lie on top of each other.
jqhost::FrameEntry Entry(const cv::Mat& pixels, bool first) {
  jqhost::FrameEntry frame;
  frame.size = pixels.size();
  if (!first) frame.mosaic = pixels.size() * 2;
  return frame;
}

cv::Mat Noise(int seed) {
  cv::Mat pixels(200, 300, CV_8UC3);
  cv::RNG(static_cast<std::uint64_t>(seed)).fill(pixels, cv::RNG::UNIFORM, 0, 256);
  return pixels;
}

// One frame alone is more than this queue holds, so each waits for the one before it.
TEST(JournalWriter, AFullQueueIsWaitedForAndToldAndNothingIsLost) {
  const jqstitch_test::TemporaryFolder place;
  JournalPace pace;
  pace.queueBytes = 1;
  pace.flushEvery = 0.01;
  constexpr int kFrames = 12;
  {
    JournalWriter writer(NewFolder(place / "journal"), pace);
    for (int i = 0; i < kFrames; ++i) {
      cv::Mat pixels = Noise(i);
      EXPECT_EQ(writer.AddFrame(Entry(pixels, i == 0), pixels), i + 1);
      pixels.setTo(0);  // the caller's again
    }
    writer.Settle();
    const JournalHealth health = writer.Health();
    EXPECT_EQ(health.problem, "");
    EXPECT_EQ(health.frames, kFrames);
    EXPECT_GT(health.secondsWaited, 0.0);
  }
  const JournalFolder folder(place / "journal", JournalFolder::Use::kRead);
  const jqhost::JournalLog log = ReadLog(folder);
  ASSERT_EQ(log.damage, "");
  ASSERT_EQ(log.steps.Steps().size(), static_cast<std::size_t>(kFrames));
  for (int i = 0; i < kFrames; ++i) {
    const cv::Mat read =
        ReadFrameFile(folder, *log.steps.Steps()[static_cast<std::size_t>(i)].frame);
    EXPECT_EQ(cv::norm(read, Noise(i), cv::NORM_INF), 0) << i;
  }
}

// Grey, with transparency, and 16 bits: what a record can hold comes back as it was.
TEST(JournalWriter, PixelsOfEveryKindComeBack) {
  const jqstitch_test::TemporaryFolder place;
  std::vector<cv::Mat> kinds;
  for (const int type : {CV_8UC1, CV_8UC3, CV_8UC4, CV_16UC1, CV_16UC3}) {
    cv::Mat pixels(40, 50, type);
    cv::RNG(7).fill(pixels, cv::RNG::UNIFORM, 0, 65536);
    kinds.push_back(pixels);
  }
  {
    JournalWriter writer(NewFolder(place / "journal"), JournalPace());
    for (const cv::Mat& pixels : kinds) {
      // A view into a larger matrix.
      cv::Mat larger;
      cv::copyMakeBorder(pixels, larger, 3, 3, 3, 3, cv::BORDER_CONSTANT);
      const cv::Rect inside(cv::Point(3, 3), pixels.size());
      writer.AddFrame(Entry(pixels, pixels.data == kinds[0].data), larger(inside));
    }
  }
  const JournalFolder folder(place / "journal", JournalFolder::Use::kRead);
  const jqhost::JournalLog log = ReadLog(folder);
  ASSERT_EQ(log.steps.Steps().size(), kinds.size()) << log.damage;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    const cv::Mat read = ReadFrameFile(folder, *log.steps.Steps()[i].frame);
    ASSERT_EQ(read.type(), kinds[i].type());
    EXPECT_EQ(cv::norm(read, kinds[i], cv::NORM_INF), 0);
  }
}

TEST(JournalWriter, WhatCannotBeWrittenEndsTheJournalAndIsTold) {
  const jqstitch_test::TemporaryFolder place;
  const std::string folder = place / "journal";
  {
    JournalWriter writer(NewFolder(folder), JournalPace());
    const cv::Mat pixels = Noise(1);
    writer.AddFrame(Entry(pixels, true), pixels);
    writer.Settle();
    fs::create_directory(folder + "/frames/000002.png");  // a file cannot be made there
    writer.AddFrame(Entry(pixels, false), pixels);
    writer.Settle();
    const JournalHealth health = writer.Health();
    EXPECT_EQ(health.frames, 1);
    EXPECT_EQ(health.problem.rfind("cannot write '" + folder + "/frames/000002.png': ", 0), 0u)
        << health.problem;
    // What comes later would hang on what is missing.
    writer.AddFrame(Entry(pixels, false), pixels);
    writer.Settle();
    EXPECT_EQ(writer.Health().frames, 1);
  }
  EXPECT_FALSE(fs::exists(folder + "/frames/000003.png"));
  const jqhost::JournalLog log = ReadLog(JournalFolder(folder, JournalFolder::Use::kRead));
  EXPECT_EQ(log.steps.Steps().size(), 1u);
}

// A run that was taken back and went on elsewhere, driven by hand as a window would: what
// is rebuilt is what the stitcher had.
TEST(JournalWriter, UndoAndContinueAreRecorded) {
  const std::uint64_t seed = TestSeed();
  SCOPED_TRACE("JQ_TEST_SEED=" + std::to_string(seed));
  RandomSource random(seed);
  const cv::Size size(200, 160);
  const cv::Mat scene = scenes::Dense(random, 900, 900);
  const cv::Point first(300, 300);
  const auto cut = [&](cv::Point place) {
    jqhost::SourceFrame frame;
    frame.number = 1;
    frame.image = scenes::Cut(scene, first + place, size);
    return frame;
  };
  const jqstitch_test::TemporaryFolder place;
  cv::Mat live;
  jqhost::FrameResult last;
  jqhost::PushSession session{jqhost::StitchSettings()};
  JQImageStitching& stitcher = session.Stitcher();
  stitcher.SetUndoDepth(3);
  {
    JournalWriter writer(NewFolder(place / "journal"), JournalPace());
    session.Record(writer, [] { return jqhost::SampleSummary(); });
    ASSERT_TRUE(session.Take(cut({0, 0})).Placed());
    ASSERT_TRUE(session.Take(cut({40, 30})).Placed());
    ASSERT_TRUE(session.Take(cut({80, 10})).Placed());
    ASSERT_TRUE(stitcher.UndoLastFrame());
    writer.AddUndo(3);
    ASSERT_TRUE(session.Take(cut({70, 60})).Placed());
    ASSERT_TRUE(session.ContinueAt({0, 0}));
    EXPECT_EQ(writer.AddContinue({0, 0}), 5);
    writer.Settle();
    fs::copy(place / "journal", place / "gone on", fs::copy_options::recursive);
    last = session.Take(cut({-35, -20}));
    ASSERT_TRUE(last.Placed());
    live = stitcher.GetMosaic().clone();
  }
  {
    jqhost::RecordedRun run(place / "journal", jqhost::RecordedPart());
    jqhost::PushSession again{jqhost::StitchSettings()};
    ASSERT_TRUE(run.Rebuild(again, false, jqhost::StopToken(), [](int) {}));
    const cv::Mat rebuilt = again.Stitcher().GetMosaic();
    ASSERT_EQ(rebuilt.size(), live.size());
    EXPECT_EQ(cv::norm(rebuilt, live, cv::NORM_INF), 0);
    EXPECT_EQ(again.Stitcher().GetCurrentPosition(), stitcher.GetCurrentPosition());
  }
  // Taken up right after going on elsewhere, the next frame is judged as it was then: against
  // the block there, not against the frame placed last.
  {
    jqhost::RecordedRun run(place / "gone on", jqhost::RecordedPart());
    jqhost::PushSession again{jqhost::StitchSettings()};
    ASSERT_TRUE(run.Rebuild(again, false, jqhost::StopToken(), [](int) {}));
    const jqhost::FrameResult result = again.Take(cut({-35, -20}));
    ASSERT_TRUE(result.Placed());
    EXPECT_EQ(result.position, last.position);
    ASSERT_TRUE(result.doubt && last.doubt);
    EXPECT_FALSE(last.doubt->doubtful);
    EXPECT_EQ(result.doubt->confidence, last.doubt->confidence);
    EXPECT_EQ(result.doubt->agreement, last.doubt->agreement);
  }
  // Frame 4 can go without 6, which was measured elsewhere; what is left is the run that
  // never saw it. (4 lies at (70, 60) and covers a part of the block at (0, 0).)
  jqhost::RecordedPart part;
  part.drop = {4};
  EXPECT_THROW(jqhost::RecordedRun(place / "journal", part), jqhost::InputError);
  part.drop = {4, 6};
  jqhost::RecordedRun run(place / "journal", part);
  EXPECT_EQ(run.TakenOut(), (std::vector<int>{6, 5, 4}));
  jqhost::PushSession again{jqhost::StitchSettings()};
  ASSERT_TRUE(run.Rebuild(again, false, jqhost::StopToken(), [](int) {}));
  jqhost::PushSession never{jqhost::StitchSettings()};
  never.Take(cut({0, 0}));
  never.Take(cut({40, 30}));
  const cv::Mat expected = never.Stitcher().GetMosaic(), left = again.Stitcher().GetMosaic();
  ASSERT_EQ(left.size(), expected.size());
  EXPECT_EQ(cv::norm(left, expected, cv::NORM_INF), 0);
}

}  // namespace
}  // namespace jqhost_test

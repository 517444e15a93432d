// A run taken up at another place of its mosaic.

#include <gtest/gtest.h>

#include <climits>
#include <tuple>
#include <vector>

#include "batch_files.h"
#include "flat_run.h"
#include "seen_run.h"
#include "support/scenes.h"

namespace {

const cv::Size kFrame(240, 200);

void Feed(JQImageStitching& stitcher, const cv::Mat& frame, int mode = 0, int level = 1) {
  HostRecord record(frame);
  stitcher.Stitching(record.get(), mode, level, 8);
}

void ExpectRefused(JQImageStitching& stitcher, cv::Point at) {
  SCOPED_TRACE(at);
  const SeenRun before(stitcher);
  const int count = stitcher.GetUndoCount();
  EXPECT_FALSE(stitcher.ContinueAt(at));
  ExpectSame(ViewOf(stitcher), before.view);
  ExpectSame(stitcher.GetLastVerdict(), before.verdict);
  EXPECT_EQ(stitcher.GetUndoCount(), count);
}

}  // namespace

TEST(ContinueAt, IsRefusedBeforeTheMosaicExists) {
  JQImageStitching stitcher;
  stitcher.SetUndoDepth(3);
  ExpectRefused(stitcher, cv::Point());
  Feed(stitcher, cv::Mat(kFrame, CV_8UC3, cv::Scalar::all(80)), 1);
  ExpectRefused(stitcher, cv::Point());
}

// One even frame in the middle of a mosaic of twice its size.
TEST(ContinueAt, IsRefusedOutsideOfTheMosaicAndOnEmptyPixels) {
  for (const int level : {1, 2, 3}) {
    FlatRun run(cv::Size(60, 50) * level, level);
    run.stitcher.SetUndoDepth(3);
    run.Take(0, 0, 0);  // makes the mosaic and is not placed
    ASSERT_EQ(run.stitcher.GetMosaic().size(), cv::Size(120, 100));
    ASSERT_EQ(run.stitcher.GetCurrentPosition(), cv::Point(30, 25));
    for (const cv::Point at :
         {cv::Point(29, 25), cv::Point(31, 25), cv::Point(30, 24), cv::Point(30, 26),
          cv::Point(0, 0), cv::Point(60, 50), cv::Point(61, 50), cv::Point(60, 51),
          cv::Point(-1, 25), cv::Point(30, -1), cv::Point(INT_MIN, INT_MIN),
          cv::Point(INT_MAX, INT_MAX), cv::Point(INT_MAX, 25), cv::Point(30, INT_MIN)}) {
      ExpectRefused(run.stitcher, at);
    }
    // A pixel with one sample left is not empty; one without is, also in the far corner.
    cv::Mat mosaic = run.stitcher.GetMosaic();
    mosaic.at<cv::Vec3b>(25 + 49, 30 + 59) = cv::Vec3b(0, 0, 1);
    EXPECT_TRUE(run.stitcher.ContinueAt(cv::Point(30, 25)));
    mosaic.at<cv::Vec3b>(25 + 49, 30 + 59) = cv::Vec3b(0, 0, 0);
    ExpectRefused(run.stitcher, cv::Point(30, 25));
    // Where the whole mosaic is painted, its corners are allowed.
    mosaic.setTo(cv::Scalar::all(50));
    EXPECT_TRUE(run.stitcher.ContinueAt(cv::Point(0, 0)));
    EXPECT_TRUE(run.stitcher.ContinueAt(cv::Point(60, 50)));
    EXPECT_EQ(run.stitcher.GetCurrentPosition(), cv::Point(60, 50));
  }
}

TEST(ContinueAt, IsNotForBatchRuns) {
  RandomSource random(32);
  const cv::Mat scene = scenes::Dense(random, 300, 500);
  BatchFiles files;
  for (int k = 0; k < 3; ++k) files.Add(scenes::Cut(scene, cv::Point(20 + 60 * k, 20), kFrame));
  JQImageStitching stitcher;
  const BatchRun batch(stitcher, files.paths());
  ASSERT_EQ(stitcher.GetFrameCount(), 3);
  ExpectRefused(stitcher, stitcher.GetCurrentPosition());
}

// The block at the newest frame's place is what is the reference anyway, so that nothing
// may come of it. Above level 1 the motion test's previous frame is a camera frame.
TEST(ContinueAt, AtTheNewestFrameChangesNothingThatFollows) {
  for (const auto& [mode, level] :
       {std::tuple(0, 1), std::tuple(1, 1), std::tuple(0, 2), std::tuple(0, 3)}) {
    SCOPED_TRACE(std::to_string(mode) + ", level " + std::to_string(level));
    RandomSource random(33);
    const cv::Size size = kFrame * level;
    const cv::Mat scene = mode == 0 ? scenes::Dense(random, size.height * 2, size.width * 3, level)
                                    : scenes::Quiet(random, size.height * 2, size.width * 3, level);
    JQImageStitching one, other;
    for (int k = 0; k < 5; ++k) {
      const cv::Mat frame =
          scenes::Cut(scene, cv::Point(size.width * k * 2 / 5, 20 * level * k), size);
      Feed(one, frame, mode, level);
      Feed(other, frame, mode, level);
      if (k == 0) continue;
      ASSERT_TRUE(one.IsLastFrameAccepted());
      EXPECT_TRUE(other.ContinueAt(other.GetCurrentPosition()));
      if (level == 1) {
        ExpectSameRun(other, SeenRun(one));
      } else {
        EXPECT_TRUE(SameMatrix(other.GetMosaic(), one.GetMosaic()));
        EXPECT_TRUE(SameMatrix(inside::RefFrame(other), inside::RefFrame(one)));
        EXPECT_EQ(other.GetStitchFlags(), one.GetStitchFlags());
        ExpectSame(other.GetLastVerdict(), one.GetLastVerdict());
      }
    }
  }
}

// A camera that has lost its track comes back to a place that is in the mosaic.
TEST(ContinueAt, TakesALostRunUpAgain) {
  RandomSource random(34);
  const cv::Mat scene = scenes::Dense(random, 500, 1200);
  JQImageStitching stitcher;
  const auto at = [&](int x, int y) { return scenes::Cut(scene, cv::Point(x, y), kFrame); };
  for (const int x : {100, 180, 260}) Feed(stitcher, at(x, 100));
  ASSERT_EQ(stitcher.GetFrameCount(), 3);
  const cv::Point newest = stitcher.GetCurrentPosition();
  const cv::Size size = stitcher.GetMosaic().size();
  Feed(stitcher, at(900, 250));
  ASSERT_FALSE(stitcher.IsLastFrameAccepted());
  Feed(stitcher, at(100, 160));
  ASSERT_FALSE(stitcher.IsLastFrameAccepted());

  // 20 pixels to the right of the first frame, and from there 60 down.
  ASSERT_TRUE(stitcher.ContinueAt(newest - cv::Point(140, 0)));
  EXPECT_EQ(stitcher.GetOffsetPosition(), cv::Point());
  EXPECT_EQ(stitcher.GetFrameCount(), 3);
  Feed(stitcher, at(120, 160));
  ASSERT_TRUE(stitcher.IsLastFrameAccepted());
  const JQFrameVerdict verdict = stitcher.GetLastVerdict();
  EXPECT_EQ(verdict.offset, cv::Point(0, 60));
  ASSERT_EQ(stitcher.GetMosaic().cols, size.width);
  EXPECT_EQ(stitcher.GetCurrentPosition(), newest + cv::Point(-140, 60));
}

// What a frame that was left out has measured would lead the next overlap test astray.
TEST(ContinueAt, ForgetsTheOffsetAndKeepsTheRestOfTheRecord) {
  FlatRun run(cv::Size(60, 50));
  run.Take(0, 0, 0);
  run.Take(4, 3, 25);
  ASSERT_FALSE(run.stitcher.IsLastFrameAccepted());
  ASSERT_EQ(run.stitcher.GetOffsetPosition(), cv::Point(4, 3));
  stitchflags expected = run.stitcher.GetStitchFlags();
  ASSERT_TRUE(run.stitcher.ContinueAt(run.stitcher.GetCurrentPosition()));
  expected.offsetX = expected.offsetY = 0;
  EXPECT_EQ(run.stitcher.GetStitchFlags(), expected);
  EXPECT_EQ(run.stitcher.GetOffsetPosition(), cv::Point());
}

TEST(ContinueAt, CanBeTakenBack) {
  FlatRun run(cv::Size(60, 50));
  run.stitcher.SetUndoDepth(2);
  run.Take(20, 0);
  run.TakeTooDifferent();
  const SeenRun before(run.stitcher);
  ASSERT_TRUE(run.stitcher.ContinueAt(cv::Point(40, 25)));
  EXPECT_EQ(run.stitcher.GetUndoCount(), 2);
  run.TakeTooDifferent();
  EXPECT_TRUE(run.stitcher.UndoLastFrame());
  ExpectSameRun(run.stitcher, before);
  EXPECT_EQ(run.stitcher.GetUndoCount(), 1);
}

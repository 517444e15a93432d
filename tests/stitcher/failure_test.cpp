// A call that fails leaves the run as it was, and the run goes on to the result that
// it would have had without that call.

#include <gtest/gtest.h>

#include "flat_run.h"
#include "run_state.h"
#include "support/outcome.h"
#include "support/scenes.h"

namespace {

const cv::Size kFrame(240, 200);

cv::Mat Scene() {
  RandomSource random(3);
  return scenes::Dense(random, 500, 600);
}

Outcome Feed(JQImageStitching& stitcher, const cv::Mat& frame, int mode = 0) {
  HostRecord record(frame);
  return Ending([&] { stitcher.Stitching(record.get(), mode, 1, 8); });
}

using Spoil = void (*)(_tagJQIMG*);

const Spoil kBadRecords[] = {
    [](_tagJQIMG* r) { r->width = 0; },
    [](_tagJQIMG* r) { r->height = 0; },
    [](_tagJQIMG* r) { r->pixels = nullptr; },
    [](_tagJQIMG* r) { r->format = 1; },
    [](_tagJQIMG* r) { r->channels = 2; },
    [](_tagJQIMG* r) { r->bytesPerChannel = 3; },
    [](_tagJQIMG* r) { --r->bytesPerLine; },
    [](_tagJQIMG* r) { r->bytesPerLine = -r->bytesPerLine; },
    [](_tagJQIMG* r) { --r->bufferSize; },
};

}  // namespace

TEST(Failure, BadFirstRecordLeavesTheStitcherIdle) {
  const cv::Mat scene = Scene();
  const cv::Mat frame = scenes::Cut(scene, cv::Point(200, 150), kFrame);
  for (const Spoil spoil : kBadRecords) {
    JQImageStitching stitcher;
    HostRecord bad(frame);
    spoil(bad.get());
    EXPECT_EQ(Ending([&] { stitcher.Stitching(bad.get(), 1, 3, 2); }), Outcome::kImageLibraryError);
    EXPECT_EQ(inside::OutImage(stitcher), nullptr);
    EXPECT_TRUE(inside::CurFrame(stitcher).empty());
    EXPECT_FALSE(stitcher.IsLastFrameAccepted());
    EXPECT_EQ(inside::Algorithm(stitcher)->m_nDetectLevel, 1);

    // The next good one starts the run, with its own three ints.
    EXPECT_EQ(Feed(stitcher, frame), Outcome::kReturned);
    EXPECT_EQ(inside::OverlapMode(stitcher), 0);
    EXPECT_EQ(inside::CurFrame(stitcher).size(), kFrame);
  }
}

TEST(Failure, BadLaterRecordLeavesEverything) {
  const cv::Mat scene = Scene();
  for (const int framesBefore : {1, 2, 3}) {
    for (const Spoil spoil : kBadRecords) {
      JQImageStitching stitcher;
      for (int k = 0; k < framesBefore; ++k)
        Feed(stitcher, scenes::Cut(scene, cv::Point(200 + 50 * k, 150), kFrame));
      const RunState before(stitcher);
      HostRecord bad(scenes::Cut(scene, cv::Point(200, 150), kFrame));
      spoil(bad.get());
      EXPECT_EQ(Ending([&] { stitcher.Stitching(bad.get(), 0, 1, 8); }),
                Outcome::kImageLibraryError);
      EXPECT_TRUE(before.IsStillThatOf(stitcher, RunState::kWithCurrentFrame));
    }
  }
}

namespace {

struct Intruder {
  const char* name;
  cv::Size size;
  int mode;
};

class OddFrame : public ::testing::TestWithParam<Intruder> {};

}  // namespace

// Among frames of 240 x 200: the motion test refuses a frame that is larger in either
// direction than the one before, the overlap test one that reaches out of the mosaic.
TEST_P(OddFrame, OfAnotherSizeLeavesTheRunAndItGoesOn) {
  const Intruder& odd = GetParam();
  RandomSource random(8);
  const cv::Mat scene =
      odd.mode == 0 ? scenes::Dense(random, 620, 720) : scenes::Quiet(random, 620, 720);
  for (const int at : {1, 2, 4}) {
    JQImageStitching stitcher;
    JQImageStitching control;
    for (int k = 0; k < 6; ++k) {
      if (k == at) {
        const RunState before(stitcher);
        const cv::Mat frame = scenes::Cut(scene, cv::Point(10, 10), odd.size);
        EXPECT_EQ(Feed(stitcher, frame, odd.mode), Outcome::kImageLibraryError);
        EXPECT_TRUE(before.IsStillThatOf(stitcher, RunState::kWithCurrentFrame));
      }
      const cv::Mat frame = scenes::Cut(scene, cv::Point(100 + 60 * k, 100 + 10 * k), kFrame);
      EXPECT_EQ(Feed(stitcher, frame, odd.mode), Outcome::kReturned);
      EXPECT_EQ(Feed(control, frame, odd.mode), Outcome::kReturned);
      EXPECT_TRUE(RunState(control).IsStillThatOf(stitcher, RunState::kWithCurrentFrame));
    }
    EXPECT_GE(stitcher.GetFrameCount(), 4);
    EXPECT_TRUE(stitcher.CutEdge());
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, OddFrame,
                         ::testing::Values(Intruder{"FarTooLarge", cv::Size(700, 600), 0},
                                           Intruder{"MotionLarger", cv::Size(300, 250), 1},
                                           Intruder{"MotionTransposed", cv::Size(200, 240), 1}),
                         [](const auto& row) { return row.param.name; });

TEST(Failure, LevelBelowOneRefusesEveryLaterFrame) {
  for (const int level : {0, -1}) {
    JQImageStitching stitcher;
    HostRecord record(cv::Mat(kFrame, CV_8UC3, cv::Scalar::all(100)));
    ASSERT_NE(stitcher.Stitching(record.get(), 1, level, 8), nullptr);
    const RunState before(stitcher);
    EXPECT_EQ(Ending([&] { stitcher.Stitching(record.get(), 1, level, 8); }),
              Outcome::kImageLibraryError);
    EXPECT_TRUE(before.IsStillThatOf(stitcher, RunState::kWithCurrentFrame));
  }
}

// The measured offset is larger than a frame only when a test writes it there; the
// acceptance test of a frame can then pass against its larger side.
TEST(Failure, PlacementOutsideTheGrownMosaicLeavesTheRun) {
  FlatRun run(cv::Size(300, 50));
  run.Take(0, 0, 0);
  const RunState before(run.stitcher);
  EXPECT_EQ(Ending([&] { run.Take(250, 240); }), Outcome::kImageLibraryError);
  inside::Flags(run.stitcher).offsetX = before.flags().offsetX;
  inside::Flags(run.stitcher).offsetY = before.flags().offsetY;
  inside::Flags(run.stitcher).matchCount = before.flags().matchCount;
  EXPECT_TRUE(before.IsStillThatOf(run.stitcher, RunState::kWithCurrentFrame));
}

// Trimming in mid-run puts the mosaic where the motion test looks for the previous
// frame. That is larger than a frame, so that its top-left part is compared.
TEST(Failure, TrimmingInMidRunCostsTheMotionTestNoFrame) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  ASSERT_TRUE(run.stitcher.CutEdge());
  ASSERT_EQ(inside::CurFrame(run.stitcher).size(), cv::Size(130, 50));
  run.Take(30, 0);
  EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_EQ(run.stitcher.GetFrameCount(), 3);
  EXPECT_EQ(run.stitcher.GetLastVerdict().motion, 2.0f);  // levels 100 and 102
}

// Where the content box is smaller than a frame, one frame is lost, not the run.
TEST(Failure, TrimmingToLessThanAFrameCostsTheMotionTestOneFrame) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  inside::MosaicMax(run.stitcher).x = inside::MosaicMin(run.stitcher).x + 99;
  ASSERT_TRUE(run.stitcher.CutEdge());
  EXPECT_EQ(Ending([&] { run.Take(30, 0); }), Outcome::kImageLibraryError);
  EXPECT_EQ(run.stitcher.GetLastVerdict().cause, JQFrameCause::kCallFailed);
  EXPECT_EQ(run.stitcher.GetFrameCount(), 2);
  run.Take(30, 0);
  EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_EQ(run.stitcher.GetFrameCount(), 3);
}

// States of a run: what makes sense is restored, what does not is refused.

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <vector>

#include "batch_files.h"
#include "flat_run.h"
#include "seen_run.h"
#include "support/outcome.h"
#include "support/scenes.h"

namespace {

// Three frames of which two were placed on a mosaic that had been there, with a step of
// each kind: one that places, one that goes on elsewhere.
JQStitchingState GoodState() {
  FlatRun run(cv::Size(60, 50));
  run.stitcher.SetUndoDepth(5);
  run.Take(20, 0);
  run.Take(-50, 10);
  EXPECT_TRUE(run.stitcher.ContinueAt(run.stitcher.GetCurrentPosition()));
  EXPECT_EQ(run.stitcher.GetUndoCount(), 3);
  return run.stitcher.SaveState();
}

cv::Mat Colour(int rows, int cols) {
  return cv::Mat(rows, cols, CV_8UC3, cv::Scalar::all(7));
}

struct Nonsense {
  const char* name;
  std::function<void(JQStitchingState&)> spoil;
};

void PrintTo(const Nonsense& row, std::ostream* out) {
  *out << row.name;
}

class SenselessState : public ::testing::TestWithParam<Nonsense> {};

}  // namespace

TEST_P(SenselessState, IsRefusedAndChangesNothing) {
  JQStitchingState state = GoodState();
  JQImageStitching fresh;
  fresh.RestoreState(state);  // makes sense so far
  GetParam().spoil(state);
  FlatRun run(cv::Size(60, 50));
  run.stitcher.SetUndoDepth(1);
  run.Take(20, 0);
  const SeenRun before(run.stitcher);
  EXPECT_EQ(Ending([&] { run.stitcher.RestoreState(state); }), Outcome::kImageLibraryError);
  ExpectSame(ViewOf(run.stitcher), before.view);
  ExpectSame(run.stitcher.GetLastVerdict(), before.verdict);
  EXPECT_EQ(run.stitcher.GetUndoCount(), 1);
  JQImageStitching idle;
  EXPECT_EQ(Ending([&] { idle.RestoreState(state); }), Outcome::kImageLibraryError);
  EXPECT_EQ(inside::OutImage(idle), nullptr);
}

using State = JQStitchingState;
INSTANTIATE_TEST_SUITE_P(
    Rows, SenselessState,
    ::testing::Values(
        Nonsense{"NoReference", [](State& s) { s.now.reference = cv::Mat(); }},
        Nonsense{"GreyReference", [](State& s) { s.now.reference = cv::Mat(50, 60, CV_8UC1); }},
        Nonsense{"DeepReference", [](State& s) { s.now.reference = cv::Mat(50, 60, CV_16UC3); }},
        Nonsense{"FloatCurrent", [](State& s) { s.now.current = cv::Mat(50, 60, CV_32FC3); }},
        Nonsense{"CurrentOfThreeDimensions",
                 [](State& s) {
                   const int sizes[] = {4, 4, 4};
                   s.now.current = cv::Mat(3, sizes, CV_8UC3);
                 }},
        Nonsense{"NoMosaic", [](State& s) { s.mosaic = cv::Mat(); }},
        Nonsense{"GreyMosaic", [](State& s) { cv::extractChannel(s.mosaic, s.mosaic, 0); }},
        Nonsense{"SmallMosaic", [](State& s) { s.mosaic = Colour(49, 60); }},
        Nonsense{"LevelZero", [](State& s) { s.detectLevel = 0; }},
        Nonsense{"NoFrameSize", [](State& s) { s.frameSize = cv::Size(); }},
        Nonsense{"NegativeFrameSize", [](State& s) { s.frameSize.width = -60; }},
        Nonsense{"LargeFrameSize", [](State& s) { s.frameSize.height = s.mosaic.rows + 1; }},
        Nonsense{"NoFrames", [](State& s) { s.now.frameCount = 0; }},
        Nonsense{"NegativeFrames", [](State& s) { s.now.frameCount = -1; }},
        Nonsense{"EndlessFrames", [](State& s) { s.now.frameCount = INT_MAX; }},
        Nonsense{"NoBounds", [](State& s) { s.now.placedBounds = cv::Rect(); }},
        Nonsense{"BoundsOutside", [](State& s) { s.now.placedBounds.x = -1; }},
        Nonsense{"BoundsTooWide", [](State& s) { s.now.placedBounds.width = INT_MAX; }},
        Nonsense{"PositionOutside", [](State& s) { s.now.record.positionX = s.mosaic.cols; }},
        Nonsense{"PositionFarOutside", [](State& s) { s.now.record.positionY = INT_MIN; }},
        Nonsense{"OffsetOutside", [](State& s) { s.now.record.offsetX = -s.mosaic.cols; }},
        Nonsense{"OffsetFarOutside", [](State& s) { s.now.record.offsetY = INT_MIN; }},
        Nonsense{"UnknownCause",
                 [](State& s) { s.now.verdict.cause = static_cast<JQFrameCause>(99); }},
        Nonsense{"NegativeCause",
                 [](State& s) { s.now.verdict.cause = static_cast<JQFrameCause>(-1); }},
        Nonsense{"NegativeDepth", [](State& s) { s.undoDepth = -1; }},
        Nonsense{"StepsBeyondTheDepth", [](State& s) { s.undoDepth = 2; }},
        Nonsense{"NotStarted", [](State& s) { s.started = false; }},
        Nonsense{"NotStartedWithSteps",
                 [](State& s) {
                   JQStitchingState idle;
                   idle.undoDepth = s.undoDepth;
                   idle.undo = s.undo;
                   s = idle;
                 }},
        Nonsense{"StepWithoutReference", [](State& s) { s.undo[1].before.reference = cv::Mat(); }},
        Nonsense{"StepWithoutFrames", [](State& s) { s.undo[1].before.frameCount = 0; }},
        Nonsense{"StepLargerThanTheMosaic", [](State& s) { s.undo[2].mosaicSize.width += 1; }},
        Nonsense{"StepMovedTooFar", [](State& s) { s.undo[1].moved.x += 1; }},
        Nonsense{"StepMovedBack", [](State& s) { s.undo[1].moved.x = -1; }},
        Nonsense{"BlockOutside", [](State& s) { s.undo[1].covered.x = INT_MAX; }},
        Nonsense{"BlockOfAnotherSize", [](State& s) { s.undo[1].block = Colour(3, 3); }},
        Nonsense{"BlockWithoutPlace", [](State& s) { s.undo[1].covered = cv::Rect(); }},
        Nonsense{"PlaceWithoutBlock", [](State& s) { s.undo[1].block = cv::Mat(); }},
        Nonsense{"PixelsFromBeforeTheMosaic", [](State& s) { s.undo[0].block = Colour(3, 3); }},
        Nonsense{"SizeFromBeforeTheMosaic", [](State& s) { s.undo[0].mosaicSize.width = -4; }},
        Nonsense{"OffsetBeforeTheMosaic", [](State& s) { s.undo[0].before.record.offsetX = 200; }},
        Nonsense{"BoundsBeforeTheMosaic",
                 [](State& s) { s.undo[0].before.placedBounds = cv::Rect(0, 0, 1, 1); }}),
    [](const auto& row) { return row.param.name; });

TEST(SavedState, ComesWithItsSettingsAndSteps) {
  const JQStitchingState state = GoodState();
  JQImageStitching stitcher;
  stitcher.RestoreState(state);
  EXPECT_EQ(stitcher.GetUndoCount(), 3);
  EXPECT_EQ(stitcher.GetFrameCount(), 3);
  const JQStitchingState again = stitcher.SaveState();
  EXPECT_EQ(again.undoDepth, 5);
  EXPECT_EQ(again.undo.size(), 3u);
  EXPECT_EQ(again.frameSize, cv::Size(60, 50));
  EXPECT_EQ(again.overlapMode, 1);
  while (stitcher.UndoLastFrame()) {
  }
  EXPECT_TRUE(stitcher.GetMosaic().empty());
  EXPECT_EQ(stitcher.GetFrameCount(), 0);
}

// A host may look at, change and restore one state more than once.
TEST(SavedState, SharesNothingWithTheStitcher) {
  FlatRun run(cv::Size(60, 50));
  run.stitcher.SetUndoDepth(2);
  run.Take(20, 0);
  const SeenRun then(run.stitcher);
  const JQStitchingState state = run.stitcher.SaveState();
  for (int k = 0; k < 2; ++k) {
    run.Take(0, 40);
    run.Take(0, 40);
    run.stitcher.GetMosaic().setTo(3);
    inside::CurFrame(run.stitcher).setTo(3);
    run.stitcher.RestoreState(state);  // into the one that it came from
    ExpectSameRun(run.stitcher, then);
    EXPECT_EQ(run.stitcher.GetUndoCount(), 1);
  }
  EXPECT_TRUE(run.stitcher.UndoLastFrame());
  EXPECT_TRUE(run.stitcher.GetMosaic().empty());
}

// A state that a host has put together from the stitcher's own pixels.
TEST(SavedState, MayConsistOfTheStitchersOwnPixels) {
  FlatRun run(cv::Size(60, 50));
  run.Take(20, 0);
  const SeenRun then(run.stitcher);
  JQStitchingState state = run.stitcher.SaveState();
  state.mosaic = run.stitcher.GetMosaic();
  state.now.current = state.now.reference = inside::RefFrame(run.stitcher);
  run.stitcher.RestoreState(state);
  ExpectSameRun(run.stitcher, then);
  EXPECT_NE(run.stitcher.GetMosaic().data, state.mosaic.data);
}

TEST(SavedState, OfTheFirstFrameShowsItAndGoesOn) {
  for (const int level : {1, 2}) {
    FlatRun one(cv::Size(60, 50) * level, level);
    JQImageStitching other;
    other.RestoreState(one.stitcher.SaveState());
    ExpectSameRun(other, SeenRun(one.stitcher));
    for (JQImageStitching* stitcher : {&one.stitcher, &other}) {
      inside::Flags(*stitcher).offsetX = 20;
      inside::Flags(*stitcher).matchCount = 11;
      HostRecord record(cv::Mat(cv::Size(60, 50) * level, CV_8UC3, cv::Scalar::all(101)));
      stitcher->Stitching(record.get(), 5, 5, 5);
    }
    ExpectSameRun(other, SeenRun(one.stitcher));
    EXPECT_EQ(other.GetFrameCount(), 2);
  }
}

// The record stays the same one through the end of a run and the start of the next.
TEST(SavedState, WithoutARunMakesTheStitcherWait) {
  JQImageStitching empty;
  empty.SetUndoDepth(3);
  const JQStitchingState state = empty.SaveState();
  EXPECT_FALSE(state.started);
  FlatRun run(cv::Size(60, 50));
  const _tagJQIMG* shown = run.Take(20, 0);
  run.stitcher.RestoreState(state);
  EXPECT_TRUE(run.stitcher.GetMosaic().empty());
  EXPECT_EQ(run.stitcher.GetLastVerdict().cause, JQFrameCause::kNone);
  EXPECT_EQ(run.stitcher.GetFrameCount(), 0);
  EXPECT_FALSE(run.stitcher.CutEdge());
  EXPECT_EQ(shown->pixels, nullptr);
  HostRecord record(cv::Mat(40, 30, CV_8UC3, cv::Scalar::all(9)));
  EXPECT_EQ(run.stitcher.GetImageStitching(record.get()), nullptr);
  // The next frame is a first one, of another size, with its own three ints.
  EXPECT_EQ(run.stitcher.Stitching(record.get(), 0, 2, 4), shown);
  EXPECT_EQ(run.stitcher.GetLastVerdict().cause, JQFrameCause::kFirstFrame);
  EXPECT_EQ(inside::Algorithm(run.stitcher)->m_nDetectLevel, 2);
  EXPECT_EQ(shown->width, 30);
}

TEST(SavedState, OfABatchRunIsNone) {
  RandomSource random(35);
  const cv::Mat scene = scenes::Dense(random, 300, 500);
  BatchFiles files;
  for (int k = 0; k < 2; ++k)
    files.Add(scenes::Cut(scene, cv::Point(20 + 60 * k, 20), cv::Size(240, 200)));
  JQImageStitching stitcher;
  const BatchRun batch(stitcher, files.paths());
  EXPECT_FALSE(stitcher.SaveState().started);
  EXPECT_TRUE(stitcher.SaveState().mosaic.empty());
  // A live run may be restored over it.
  stitcher.RestoreState(GoodState());
  EXPECT_EQ(stitcher.GetFrameCount(), 3);
  EXPECT_TRUE(stitcher.UndoLastFrame());
}

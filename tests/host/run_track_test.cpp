// Standing, track, losses and steps, on frames written by hand.
#include <gtest/gtest.h>

#include "host/record/run_track.h"
#include "host/verdict/standing.h"

namespace jqhost_test {
namespace {

using jqhost::Cause;
using jqhost::FrameResult;
using jqhost::Outcome;
using jqhost::RunRecord;
using jqhost::Standing;

FrameResult Frame(int number, Cause cause, cv::Point place = {}) {
  FrameResult frame;
  frame.number = number;
  frame.cause = cause;
  frame.position = place;
  return frame;
}

// A frame that was followed: `offset` from the frame placed last.
FrameResult Tracked(int number, cv::Point offset) {
  FrameResult frame = Frame(number, Cause::kShiftTooSmall);
  frame.measured.registered = true;
  frame.measured.matchCount = 40;
  frame.measured.offset = offset;
  return frame;
}

RunRecord Live(const std::vector<FrameResult>& frames) {
  RunRecord record;
  record.live = true;
  record.frames = frames;
  record.workingSize = cv::Size(200, 100);
  return record;
}

TEST(Track, KnowsSinceWhenItIsLostAndWhereItWasHeld) {
  jqhost::Track track;
  track.Add(Frame(1, Cause::kPlaced));
  track.Add(Tracked(2, {5, 0}));
  EXPECT_FALSE(track.IsLost());
  EXPECT_EQ(track.LastHeld(), 2);
  track.Add(Frame(3, Cause::kUnreadable));
  EXPECT_FALSE(track.IsLost()) << "an unusable frame says nothing about the track";
  track.Add(Frame(4, Cause::kTooFewMatches));
  track.Add(Frame(5, Cause::kUnreadable));
  track.Add(Frame(6, Cause::kNoCorners));
  EXPECT_TRUE(track.IsLost());
  EXPECT_EQ(track.LostSince(), 4);
  EXPECT_EQ(track.LastHeld(), 2);
  track.Add(Tracked(7, {6, 0}));
  EXPECT_FALSE(track.IsLost());
  EXPECT_EQ(track.LastHeld(), 7);
  EXPECT_EQ(track.Count(Standing::kPlaced), 1);
  EXPECT_EQ(track.Count(Standing::kTracked), 2);
  EXPECT_EQ(track.Count(Standing::kLost), 2);
  EXPECT_EQ(track.Count(Standing::kUnusable), 2);
}

TEST(Losses, AreStretchesBetweenHeldFrames) {
  const std::vector<FrameResult> frames = {
      Frame(1, Cause::kPlaced),     Frame(2, Cause::kTooFewMatches),
      Frame(3, Cause::kUnreadable), Frame(4, Cause::kShiftTooLarge),
      Tracked(5, {1, 1}),           Frame(6, Cause::kFailed),
      Frame(7, Cause::kNoCorners),  Frame(8, Cause::kNotReached)};
  const std::vector<jqhost::Loss> losses = jqhost::FindLosses(frames);
  ASSERT_EQ(losses.size(), 2u);
  EXPECT_EQ(losses[0].held, 0u);
  EXPECT_EQ(losses[0].first, 1u);
  EXPECT_EQ(losses[0].last, 3u);
  EXPECT_TRUE(losses[0].regained);
  EXPECT_EQ(losses[1].held, 4u);
  EXPECT_EQ(losses[1].first, 6u);
  EXPECT_EQ(losses[1].last, 6u);
  EXPECT_FALSE(losses[1].regained);
}

TEST(MedianStep, IsTheWayFromFrameToFrame) {
  // Places 0, 8, 20 (placed), 30, lost, 60: ways of 4, 6 and 5 %; the loss gives none.
  const RunRecord record =
      Live({Frame(1, Cause::kPlaced), Tracked(2, {8, 0}), Frame(3, Cause::kPlaced, {20, 0}),
            Tracked(4, {10, 2}), Frame(5, Cause::kTooFewMatches), Tracked(6, {40, 0})});
  const auto step = jqhost::MedianStep(record);
  ASSERT_TRUE(step.has_value());
  EXPECT_DOUBLE_EQ(*step, 0.05);
  EXPECT_FALSE(jqhost::MedianStep(Live({Frame(1, Cause::kPlaced), Tracked(2, {8, 0})})));
}

TEST(Outcome, CountsTrackedFramesInALiveRunOnly) {
  RunRecord record =
      Live({Frame(1, Cause::kPlaced), Tracked(2, {8, 0}), Frame(3, Cause::kPlaced, {30, 0})});
  EXPECT_EQ(OutcomeOf(record), Outcome::kAllFollowed);
  record.live = false;
  EXPECT_EQ(OutcomeOf(record), Outcome::kSomeLeftOut);
  record.live = true;
  record.announced = 9;
  EXPECT_EQ(OutcomeOf(record), Outcome::kSomeLeftOut) << "a video that ended early";
  record.announced = 0;
  record.frames.push_back(Frame(4, Cause::kTooFewMatches));
  EXPECT_EQ(OutcomeOf(record), Outcome::kSomeLeftOut);
  EXPECT_EQ(OutcomeOf(Live({Frame(1, Cause::kPlaced), Tracked(2, {2, 0})})), Outcome::kAllFollowed);
  EXPECT_EQ(OutcomeOf(Live({Frame(1, Cause::kPlaced), Frame(2, Cause::kTooFewMatches)})),
            Outcome::kNonePlaced);
  EXPECT_EQ(OutcomeOf(Live({Frame(1, Cause::kPlaced), Frame(2, Cause::kNotReached)})),
            Outcome::kSomeLeftOut)
      << "stopped before any other frame was tried";
  EXPECT_EQ(OutcomeOf(Live({Frame(1, Cause::kPlaced)})), Outcome::kAllPlaced);
  EXPECT_EQ(OutcomeOf(Live({Frame(1, Cause::kUnreadable)})), Outcome::kNoPicture);
}

}  // namespace
}  // namespace jqhost_test

#include "words/guidance.h"

#include <gtest/gtest.h>

#include <set>

namespace jqscope {
namespace {

using jqhost::Cause;

RunReport Running(Cause cause, double shift = 0.0) {
  RunReport report;
  report.phase = RunPhase::kRunning;
  report.stitched = 5;
  report.path = {QPoint(0, 0), QPoint(80, 0)};
  report.last.cause = cause;
  report.last.shiftShare = shift;
  report.last.measured.registered = true;
  report.last.measured.matchCount = 30;
  return report;
}

TEST(GuidanceTest, SaysWhatToDoForEveryCause) {
  EXPECT_EQ(GuidanceFor(Running(Cause::kShiftTooSmall, 0.062)),
            "Move on: 6 % of the frame, 10 % needed");
  EXPECT_EQ(GuidanceFor(Running(Cause::kShiftTooLarge, 0.93)),
            "Too far: move back towards the outline");
  EXPECT_EQ(GuidanceFor(Running(Cause::kTooFewMatches)),
            "Lost: move back to the highlighted place");
  EXPECT_EQ(GuidanceFor(Running(Cause::kNoCorners)),
            "Nothing to hold on to here: too little texture");
  RunReport unreadable = Running(Cause::kUnreadable);
  unreadable.last.detail = "it is damaged";
  EXPECT_EQ(GuidanceFor(unreadable), "This frame cannot be used: it is damaged");
}

TEST(GuidanceTest, TellsLightFromFocusAtTheFramesOwnPlace) {
  RunReport report = Running(Cause::kOverlapTestFailed);
  EXPECT_EQ(GuidanceFor(report), "Lost: move back to the highlighted place");
  report.last.appearance = jqhost::Appearance{0.8, 1.0};
  EXPECT_TRUE(GuidanceFor(report).startsWith("Too dark beside the picture so far"));
  report.last.appearance = jqhost::Appearance{1.2, 1.0};
  EXPECT_TRUE(GuidanceFor(report).startsWith("Too bright beside the picture so far"));
  report.last.appearance = jqhost::Appearance{1.0, 0.5};
  EXPECT_TRUE(GuidanceFor(report).startsWith("Out of focus beside the picture so far"));
}

TEST(GuidanceTest, LimitsGrowWithTheWorkingScale) {
  RunReport report = Running(Cause::kShiftTooSmall, 0.15);
  report.detectLevel = 2;
  EXPECT_EQ(GuidanceFor(report), "Move on: 15 % of the frame, 20 % needed");
  EXPECT_NEAR(CoachingFor(report).most, 1.8, 1e-6);
}

TEST(GuidanceTest, ShiftIsToldOnlyWhereItWasMeasured) {
  RunReport report = Running(Cause::kTooFewMatches, 0.4);
  report.last.measured.matchCount = 5;
  EXPECT_FALSE(CoachingFor(report).hasShift);
  report.last.measured.matchCount = 11;
  EXPECT_TRUE(CoachingFor(report).hasShift);
  EXPECT_DOUBLE_EQ(CoachingFor(report).shift, 0.4);
}

// Somebody who sees no colours, or hears the window read aloud, must know the state too.
TEST(LiveStateTest, StatesDifferByWordAndWordlessOnesByLine) {
  std::set<QString> words;
  for (const LiveState state : {LiveState::kPlaced, LiveState::kTracked, LiveState::kTooFar,
                                LiveState::kLost, LiveState::kUnusable, LiveState::kNone}) {
    words.insert(StyleOf(state).word);
  }
  EXPECT_EQ(words.size(), 6U);
  std::set<Qt::PenStyle> lines;
  for (const LiveState state :
       {LiveState::kPlaced, LiveState::kTracked, LiveState::kTooFar, LiveState::kLost}) {
    lines.insert(StyleOf(state).line);
  }
  EXPECT_EQ(lines.size(), 4U);
}

}  // namespace
}  // namespace jqscope

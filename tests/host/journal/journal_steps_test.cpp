// What can be taken out of a recorded run, by hand. Frames of 100 x 80; places are those
// of corners, the first one at (0, 0).
#include <gtest/gtest.h>

#include "host/input_error.h"
#include "host/journal/journal_steps.h"

namespace jqhost_test {
namespace {

using jqhost::InputError;
using jqhost::JournalSteps;
using Numbers = std::vector<int>;

jqhost::FrameEntry Frame(int number, cv::Point place, cv::Point offset) {
  jqhost::FrameEntry frame;
  frame.number = number;
  frame.size = cv::Size(100, 80);
  frame.result.position = place;
  frame.result.measured.offset = offset;
  if (number > 1) frame.mosaic = cv::Size(200, 160);
  return frame;
}

// 1 at 0, 2 at 60, 3 at 120, 4 at 180, all along a row.
JournalSteps Row() {
  JournalSteps steps(1);
  steps.Take(Frame(1, {0, 0}, {0, 0}));
  steps.Take(Frame(2, {60, 0}, {60, 0}));
  steps.Take(Frame(3, {120, 0}, {60, 0}));
  steps.Take(Frame(4, {180, 0}, {60, 0}));
  return steps;
}

// The row; then 5 goes on from (10, 0), which 1 and 2 cover and 3 and 4 do not; then 6
// below it.
JournalSteps WithReturn() {
  JournalSteps steps = Row();
  steps.Take(jqhost::ContinueEntry{5, {10, 0}});
  steps.Take(Frame(6, {10, 40}, {0, 40}));
  return steps;
}

Numbers Left(const JournalSteps& steps) {
  Numbers numbers;
  for (const jqhost::JournalStep& step : steps.Steps()) numbers.push_back(step.number);
  return numbers;
}

std::string WhyNotDropped(JournalSteps steps, const Numbers& numbers) {
  const Numbers before = Left(steps);
  try {
    steps.Drop(numbers);
  } catch (const InputError& refused) {
    EXPECT_EQ(Left(steps), before);
    return refused.what();
  }
  return "";
}

TEST(JournalSteps, OnlyTheTailCanBeDroppedOfARow) {
  JournalSteps steps = Row();
  EXPECT_EQ(WhyNotDropped(steps, {3}), "frame 3 cannot be taken out: 4 hangs on it");
  EXPECT_EQ(WhyNotDropped(steps, {2}), "frame 2 cannot be taken out: 3, 4 hang on it");
  EXPECT_EQ(WhyNotDropped(steps, {2, 4}), "frames 2, 4 cannot be taken out: 3 hangs on them");
  EXPECT_EQ(WhyNotDropped(steps, {9}), "there is no 9 to take out");
  EXPECT_EQ(WhyNotDropped(steps, {1, 2, 3, 4}), "nothing would be left");
  EXPECT_EQ(steps.Drop({3, 4}), (Numbers{4, 3}));
  EXPECT_EQ(Left(steps), (Numbers{1, 2}));
  EXPECT_EQ(steps.Drop({}), Numbers{});
}

TEST(JournalSteps, WhatARunReturnedFromCanBeDropped) {
  JournalSteps steps = WithReturn();
  // 4 is at the end of its own way; 3 alone would leave 4 in the air.
  EXPECT_EQ(WhyNotDropped(steps, {3}), "frame 3 cannot be taken out: 4 hangs on it");
  EXPECT_EQ(steps.Drop({4}), Numbers{4});
  EXPECT_EQ(Left(steps), (Numbers{1, 2, 3, 5, 6}));
  EXPECT_EQ(steps.Drop({3}), Numbers{3});
  // 6 was measured against a block that 2 is a part of.
  EXPECT_EQ(WhyNotDropped(steps, {2}), "frame 2 cannot be taken out: 6 hangs on it");
  // With 6 gone nothing makes use of 5, which goes along.
  EXPECT_EQ(steps.Drop({2, 6}), (Numbers{6, 5, 2}));
  EXPECT_EQ(Left(steps), Numbers{1});
}

// Blocks that only touch have no pixel in common: the block at (160, 0) begins where the
// frame at (60, 0) ends.
TEST(JournalSteps, ABlockHangsOnTheFramesThatCoverIt) {
  JournalSteps steps = Row();
  steps.Take(jqhost::ContinueEntry{5, {160, 0}});
  steps.Take(Frame(6, {160, 40}, {0, 40}));
  EXPECT_EQ(WhyNotDropped(steps, {2, 3, 4}), "frames 2, 3, 4 cannot be taken out: 6 hangs on them");
  EXPECT_EQ(WhyNotDropped(steps, {4}), "frame 4 cannot be taken out: 6 hangs on it");
  JournalSteps touching = Row();
  touching.Drop({4});
  touching.Take(jqhost::ContinueEntry{5, {-40, 0}});
  touching.Take(Frame(6, {-40, 40}, {0, 40}));
  EXPECT_EQ(touching.Drop({3}), Numbers{3});  // at 120; the block ends at 60
  EXPECT_EQ(touching.Drop({2}), Numbers{2});  // at 60: they touch
}

TEST(JournalSteps, CutsAreMadeBehindAFrame) {
  JournalSteps steps = WithReturn();
  EXPECT_THROW(steps.KeepUntil(5), InputError);
  EXPECT_THROW(steps.KeepUntil(7), InputError);
  EXPECT_EQ(steps.KeepUntil(4), (Numbers{6, 5}));
  EXPECT_EQ(steps.KeepUntil(4), Numbers{});
  EXPECT_EQ(Left(steps), (Numbers{1, 2, 3, 4}));
}

TEST(JournalSteps, AnUndoneFrameIsGone) {
  JournalSteps steps = Row();
  steps.Take(jqhost::UndoEntry{4});
  steps.Take(Frame(5, {120, 40}, {0, 40}));
  EXPECT_EQ(Left(steps), (Numbers{1, 2, 3, 5}));
  EXPECT_THROW(steps.Take(jqhost::UndoEntry{4}), InputError);
  EXPECT_THROW(steps.Take(jqhost::UndoEntry{3}), InputError);
}

TEST(JournalSteps, WhatCannotComeNextIsRefused) {
  JournalSteps none(1);
  EXPECT_THROW(none.Take(jqhost::ContinueEntry{1, {0, 0}}), InputError);
  EXPECT_THROW(none.Take(Frame(1, {1, 0}, {0, 0})), InputError);
  EXPECT_THROW(none.Take(Frame(1, {0, 0}, {0, 1})), InputError);
  EXPECT_THROW(JournalSteps(81).Take(Frame(1, {0, 0}, {0, 0})), InputError);
  JournalSteps steps = Row();
  EXPECT_THROW(steps.Take(Frame(5, {280, 0}, {100, 0})), InputError);
  EXPECT_THROW(steps.Take(Frame(5, {180, -80}, {0, -80})), InputError);
  EXPECT_THROW(steps.Take(Frame(5, {200, 0}, {30, 0})), InputError);
  jqhost::FrameEntry other = Frame(5, {210, 0}, {30, 0});
  other.size.width = 99;
  EXPECT_THROW(steps.Take(other), InputError);
  EXPECT_EQ(Left(steps), (Numbers{1, 2, 3, 4}));
}

}  // namespace
}  // namespace jqhost_test

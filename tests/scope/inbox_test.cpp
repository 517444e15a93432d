#include "work/inbox.h"

#include <gtest/gtest.h>

#include <thread>

namespace jqscope {
namespace {

TimedFrame Frame(int number) {
  TimedFrame frame;
  frame.frame.number = number;
  return frame;
}

TEST(InboxTest, TheNewestFrameOfACameraWinsAndTheOthersAreCounted) {
  Inbox inbox;
  const jqhost::StopToken stop;
  for (int i = 1; i <= 4; ++i) EXPECT_TRUE(inbox.Put(Frame(i), Inbox::WhenFull::kReplace, stop));
  EXPECT_EQ(inbox.Dropped(), 3);
  EXPECT_EQ(inbox.Next(true)->frame->frame.number, 4);
  inbox.ResetDropped();
  EXPECT_EQ(inbox.Dropped(), 0);
}

TEST(InboxTest, AFileWaitsUntilItsFrameIsTaken) {
  Inbox inbox;
  const jqhost::StopToken stop;
  std::thread source([&] {
    for (int i = 1; i <= 20; ++i) inbox.Put(Frame(i), Inbox::WhenFull::kWait, stop);
  });
  for (int i = 1; i <= 20; ++i) EXPECT_EQ(inbox.Next(true)->frame->frame.number, i);
  source.join();
  EXPECT_EQ(inbox.Dropped(), 0);
}

TEST(InboxTest, TasksComeFirstAndFramesOnlyWhenWanted) {
  Inbox inbox;
  const jqhost::StopToken stop;
  int done = 0;
  inbox.Put(Frame(1), Inbox::WhenFull::kReplace, stop);
  inbox.Post([&] { done = 1; });
  inbox.Post([&] { done = 2; });
  inbox.Next(true)->task();
  EXPECT_EQ(done, 1);
  inbox.Next(false)->task();
  EXPECT_EQ(done, 2);
  EXPECT_TRUE(inbox.Next(true)->frame.has_value());
}

TEST(InboxTest, NothingOfADismissedSourceComesIn) {
  Inbox inbox;
  jqhost::StopToken stop, other;
  inbox.Put(Frame(1), Inbox::WhenFull::kWait, stop);
  std::thread source([&] { EXPECT_FALSE(inbox.Put(Frame(2), Inbox::WhenFull::kWait, stop)); });
  inbox.Dismiss(stop);
  source.join();
  EXPECT_FALSE(inbox.Put(Frame(3), Inbox::WhenFull::kReplace, stop));
  inbox.Put(Frame(9), Inbox::WhenFull::kReplace, other);
  EXPECT_EQ(inbox.Next(true)->frame->frame.number, 9);
  inbox.Close();
  EXPECT_FALSE(inbox.Next(true).has_value());
}

TEST(InboxTest, WhatWasAskedForBeforeTheEndIsStillDone) {
  Inbox inbox;
  const jqhost::StopToken stop;
  int done = 0;
  inbox.Put(Frame(1), Inbox::WhenFull::kReplace, stop);
  inbox.Post([&] { ++done; });
  inbox.Post([&] { ++done; });
  inbox.Close();
  while (const std::optional<Inbox::Item> item = inbox.Next(true)) {
    ASSERT_TRUE(item->task);
    item->task();
  }
  EXPECT_EQ(done, 2);
}

}  // namespace
}  // namespace jqscope

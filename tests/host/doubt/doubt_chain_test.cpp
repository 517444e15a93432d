// The chain of doubts on its other thread: the same answers as one by one, in order.
#include "host/verdict/doubt/doubt_chain.h"

#include <gtest/gtest.h>

#include <new>
#include <thread>
#include <vector>

#include "doubt_pictures.h"

using jqhost::DoubtChain;
using jqhost::PlacementDoubt;
using jqhost::ReducedFrame;
using jqhost::ReduceFrame;

namespace {

const cv::Size kFrame(300, 240);

class DoubtChainTest : public ::testing::Test {
 protected:
  cv::Mat At(int x) const { return m_scene(cv::Rect({x, 20}, kFrame)); }
  const cv::Mat m_scene = RandomScene({1200, 300}, 9);
};

}  // namespace

TEST_F(DoubtChainTest, JudgesEachAgainstTheOneBefore) {
  const std::vector<int> corners = {10, 110, 250, 310};
  DoubtChain chain(ReduceFrame(At(corners[0])));
  for (std::size_t i = 1; i < corners.size(); ++i) {
    // The third is placed where it does not belong.
    const cv::Point shift(corners[i] - corners[i - 1] + (i == 2 ? 40 : 0), 0);
    EXPECT_FALSE(chain.InHand());
    chain.Begin([&, i] { return ReduceFrame(At(corners[i])); }, shift);
    EXPECT_TRUE(chain.InHand());
    const PlacementDoubt doubt = chain.Finish();
    const PlacementDoubt alone =
        jqhost::JudgePlacement(ViewOf(At(corners[i - 1])), ViewOf(At(corners[i])), shift);
    EXPECT_EQ(doubt.doubtful, i == 2) << i;
    EXPECT_EQ(doubt.confidence, alone.confidence) << i;
    EXPECT_EQ(doubt.agreement, alone.agreement) << i;
    EXPECT_EQ(doubt.rivalShift, alone.rivalShift) << i;
  }
}

TEST_F(DoubtChainTest, RunsElsewhereAndIsWaitedFor) {
  std::thread::id other;
  {
    DoubtChain chain(ReduceFrame(At(0)));
    chain.Begin(
        [&] {
          other = std::this_thread::get_id();
          return ReduceFrame(At(100));
        },
        {100, 0});
  }
  EXPECT_NE(other, std::thread::id());
  EXPECT_NE(other, std::this_thread::get_id());
}

// One that nobody asks about still is what the next one is compared with.
TEST_F(DoubtChainTest, ANewOneWaitsForTheOneBefore) {
  DoubtChain chain(ReduceFrame(At(0)));
  chain.Begin([&] { return ReduceFrame(At(100)); }, {100, 0});
  chain.Begin([&] { return ReduceFrame(At(220)); }, {120, 0});
  EXPECT_FALSE(chain.Finish().doubtful);
}

TEST_F(DoubtChainTest, WithoutMemoryAPlaceIsUnsupportedAndTheChainGoesOn) {
  DoubtChain chain(ReduceFrame(At(0)));
  chain.Begin([]() -> ReducedFrame { throw std::bad_alloc(); }, {100, 0});
  const PlacementDoubt doubt = chain.Finish();
  EXPECT_TRUE(doubt.doubtful);
  EXPECT_EQ(doubt.reason, jqhost::DoubtReason::kUnsupported);
  // There is nothing that the next one could be compared with.
  chain.Begin([&] { return ReduceFrame(At(220)); }, {120, 0});
  EXPECT_TRUE(chain.Finish().doubtful);
  chain.Begin([&] { return ReduceFrame(At(340)); }, {120, 0});
  EXPECT_FALSE(chain.Finish().doubtful);
}

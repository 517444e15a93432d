// Least squares over pairs, against graphs solved by hand.
#include "host/assemble/place_frames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "graph_support.h"

namespace jqhost_test {
namespace {

using jqhost::Link;
using jqhost::LinkState;
using jqhost::PlaceFrames;
using jqhost::Places;
using Links = std::vector<Link>;

void ExpectPlace(const Places& places, std::size_t frame, cv::Point2d expected, double off) {
  EXPECT_NEAR(places.place[frame].x, expected.x, off) << "frame " << frame;
  EXPECT_NEAR(places.place[frame].y, expected.y, off) << "frame " << frame;
}

TEST(PlaceFramesTest, AChainIsAddedUp) {
  const Places places = PlaceFrames(3, {Used(0, 1, {10, -3}), Used(2, 1, {-20, 5})});
  EXPECT_EQ(places.islands, 1U);
  ExpectPlace(places, 0, {0, 0}, 1e-9);
  ExpectPlace(places, 1, {10, -3}, 1e-9);
  ExpectPlace(places, 2, {30, -8}, 1e-9);
}

TEST(PlaceFramesTest, TheErrorOfALoopOfEqualLinksIsSharedEqually) {
  // 10 + 10 against 21: each link gives a third of a pixel.
  const Places places =
      PlaceFrames(3, {Used(0, 1, {10, 0}), Used(1, 2, {10, 0}), Used(0, 2, {21, 0})});
  ExpectPlace(places, 1, {10 + 1.0 / 3, 0}, 1e-9);
  ExpectPlace(places, 2, {20 + 2.0 / 3, 0}, 1e-9);
}

TEST(PlaceFramesTest, ALinkOfHalfTheConfidenceGivesTwiceAsMuch) {
  // An error of 1 over 1 / weight = 1, 1, 2 is 1/4, 1/4, 1/2; the robust weights of residuals
  // that small change it by a hundredth.
  const Places places =
      PlaceFrames(3, {Used(0, 1, {10, 0}), Used(1, 2, {10, 0}), Used(0, 2, {21, 0}, 0.5)});
  ExpectPlace(places, 1, {10.25, 0}, 0.02);
  ExpectPlace(places, 2, {20.5, 0}, 0.02);
}

TEST(PlaceFramesTest, FewerMatchesWeighLess) {
  // 4 / 25 + 0.09 = 0.25 and 4 / 4 + 0.09 = 1.09: the error of 1 is shared 0.25 : 0.25 : 1.09.
  Links links = {Used(0, 1, {10, 0}), Used(1, 2, {10, 0}), Used(0, 2, {21, 0})};
  links[0].matches = links[1].matches = 25;
  links[2].matches = 4;
  ExpectPlace(PlaceFrames(3, links), 2, {20 + 0.5 / 1.59, 0}, 0.03);
}

TEST(PlaceFramesTest, AWrongLinkHardlyPullsTheOthersAlong) {
  // 1 lies at 10 directly and by way of 2; by way of 3 a wrong link says 50. Plain least
  // squares would put it at (10 + 10 / 2 + 50 / 2) / 2 = 20.
  const Places places = PlaceFrames(4, {Used(0, 1, {10, 0}), Used(0, 2, {5, 0}), Used(2, 1, {5, 0}),
                                        Used(0, 3, {5, 0}), Used(3, 1, {45, 0})});
  ExpectPlace(places, 1, {10, 0}, 0.5);
}

TEST(PlaceFramesTest, IslandsAreTheirOwnAndBeginAtZero) {
  const Places places = PlaceFrames(5, {Used(1, 3, {7, 0}), Used(2, 4, {0, 7})});
  EXPECT_EQ(places.islands, 3U);
  EXPECT_EQ(places.island, (std::vector<std::size_t>{0, 1, 2, 1, 2}));
  ExpectPlace(places, 1, {0, 0}, 0);
  ExpectPlace(places, 2, {0, 0}, 0);
  ExpectPlace(places, 3, {7, 0}, 1e-9);
  ExpectPlace(places, 4, {0, 7}, 1e-9);
}

TEST(PlaceFramesTest, NoFrameAndNoLinkAreNoError) {
  EXPECT_EQ(PlaceFrames(0, {}).islands, 0U);
  EXPECT_EQ(PlaceFrames(2, {}).islands, 2U);
}

TEST(PlaceConsistentlyTest, TheLinkThatBreaksALoopOfSixIsThrownOut) {
  // A ring of six with a second way round, so that the wrong one of its links stands alone.
  Links links = {Used(0, 1, {10, 0}), Used(1, 2, {10, 0}),  Used(2, 3, {10, 0}),
                 Used(3, 4, {0, 10}), Used(4, 5, {-30, 0}), Used(5, 0, {0, -10}),
                 Used(0, 3, {60, 0})};
  const Places places = jqhost::PlaceConsistently(6, links);
  EXPECT_EQ(NumbersOf(links, LinkState::kThrownOut), std::vector<std::size_t>{6});
  ExpectPlace(places, 4, {30, 10}, 1e-6);
}

// Nodes at random places, links of random noise below half a pixel and one gross error: what
// is recovered is near the truth, and the gross error is named.
TEST(PlaceConsistentlyTest, RandomGraphsComeOutNearTheirTruth) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> place(-1000, 1000), noise(-0.5, 0.5);
  for (int round = 0; round < 20; ++round) {
    constexpr std::size_t kFrames = 12;
    std::vector<cv::Point2d> truth(kFrames);
    for (cv::Point2d& p : truth) p = {place(random), place(random)};
    Links links;
    for (std::size_t a = 0; a < kFrames; ++a) {
      for (std::size_t b = a + 1; b < kFrames; ++b) {
        links.push_back(
            Used(a, b, truth[b] - truth[a] + cv::Point2d(noise(random), noise(random))));
      }
    }
    const std::size_t wrong = random() % links.size();
    links[wrong].shift.x += 20;
    const Places places = jqhost::PlaceConsistently(kFrames, links);
    EXPECT_EQ(NumbersOf(links, LinkState::kThrownOut), std::vector<std::size_t>{wrong});
    for (std::size_t i = 0; i < kFrames; ++i) ExpectPlace(places, i, truth[i] - truth[0], 0.7);
  }
}

}  // namespace
}  // namespace jqhost_test

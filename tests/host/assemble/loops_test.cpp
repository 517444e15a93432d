// Loops of pairs, and what is thrown out when they do not close.
#include "host/assemble/loops.h"

#include <gtest/gtest.h>

#include "graph_support.h"

namespace jqhost_test {
namespace {

using jqhost::FindLoops;
using jqhost::Link;
using jqhost::LinkState;
using jqhost::Loop;
using Links = std::vector<Link>;
using Numbers = std::vector<std::size_t>;

TEST(LoopsTest, ATriangleIsOneLoopWhateverTheDirectionOfItsLinks) {
  // 0 -> 1 is (10, 0), 1 -> 2 is (0, 10); 2 lies at (13, 14) by the third: off by (3, 4).
  for (const Link& closing : {Used(0, 2, {13, 14}), Used(2, 0, {-13, -14})}) {
    const std::vector<Loop> loops =
        FindLoops(3, {Used(0, 1, {10, 0}), Used(2, 1, {0, -10}), closing});
    ASSERT_EQ(loops.size(), 1U);
    EXPECT_EQ(loops[0].length, 3);
    EXPECT_DOUBLE_EQ(loops[0].error, 5.0);
    EXPECT_FALSE(loops[0].Closes());
  }
}

TEST(LoopsTest, ASquareCountsOnceAndOnlyWhereNoDiagonalCutsIt) {
  Links square = {Used(0, 1, {10, 0}), Used(1, 2, {0, 10}), Used(2, 3, {-10, 0}),
                  Used(3, 0, {0, -12})};
  const std::vector<Loop> loops = FindLoops(4, square);
  ASSERT_EQ(loops.size(), 1U);
  EXPECT_EQ(loops[0].length, 4);
  EXPECT_DOUBLE_EQ(loops[0].error, 2.0);
  EXPECT_TRUE(loops[0].Closes());

  square.push_back(Used(0, 2, {10, 10}));
  const std::vector<Loop> triangles = FindLoops(4, square);
  ASSERT_EQ(triangles.size(), 2U);
  EXPECT_EQ(triangles[0].length, 3);
  EXPECT_EQ(triangles[1].length, 3);
}

TEST(LoopsTest, FourFramesOfWhichEachMeetsEachMakeFourTriangles) {
  Links links;
  for (std::size_t a = 0; a < 4; ++a) {
    for (std::size_t b = a + 1; b < 4; ++b) links.push_back(Used(a, b, {1.0 * (b - a), 0}));
  }
  EXPECT_EQ(FindLoops(4, links).size(), 4U);
}

TEST(LoopsTest, LinksThatAreNotUsedMakeNoLoop) {
  Links links = {Used(0, 1, {1, 0}), Used(1, 2, {1, 0}), MakeLink(0, 2, {2, 0})};
  EXPECT_TRUE(FindLoops(3, links).empty());
}

TEST(LoopsTest, AnErrorOfThreePixelsCloses) {
  const Links exact = {Used(0, 1, {1, 0}), Used(1, 2, {1, 0}), Used(0, 2, {5, 0})};
  EXPECT_TRUE(FindLoops(3, exact).at(0).Closes());
  const Links more = {Used(0, 1, {1, 0}), Used(1, 2, {1, 0}), Used(0, 2, {5.01, 0})};
  EXPECT_FALSE(FindLoops(3, more).at(0).Closes());
}

// 0 - 1 - 2
// |   |   |    steps of 10, one wrong link from 0 to 4
// 3 - 4 - 5
Links Grid() {
  return {Used(0, 1, {10, 0}), Used(1, 2, {10, 0}), Used(3, 4, {10, 0}), Used(4, 5, {10, 0}),
          Used(0, 3, {0, 10}), Used(1, 4, {0, 10}), Used(2, 5, {0, 10})};
}

TEST(ThrowOutTest, TheLinkWhoseLoopsDoNotCloseGoesHoweverSureItIs) {
  Links links = Grid();
  for (Link& link : links) link.confidence = 0.6;
  links.push_back(Used(0, 4, {40, 10}, 1.0));
  EXPECT_EQ(jqhost::ThrowOutLoopBreakers(6, links), 1);
  EXPECT_EQ(NumbersOf(links, LinkState::kThrownOut), Numbers{7});
}

TEST(ThrowOutTest, WhereAllCloseNothingGoes) {
  Links links = Grid();
  EXPECT_EQ(jqhost::ThrowOutLoopBreakers(6, links), 0);
  EXPECT_EQ(NumbersOf(links, LinkState::kUsed).size(), 7U);
}

TEST(ThrowOutTest, OfALoneTriangleAllGoUnlessOneIsClearlyWeaker) {
  // One of three is wrong, and nothing tells which: the weakest is blamed, but the others
  // are no better than a guess.
  Links alike = {Used(0, 1, {10, 0}, 0.9), Used(1, 2, {10, 0}, 0.8), Used(0, 2, {90, 0}, 0.7)};
  EXPECT_EQ(jqhost::ThrowOutLoopBreakers(3, alike), 3);
  // 0.5 is at most 0.6 of 0.9 and more than 0.6 of 0.8.
  Links clear = {Used(0, 1, {10, 0}, 0.9), Used(1, 2, {10, 0}, 0.8), Used(0, 2, {90, 0}, 0.5)};
  jqhost::ThrowOutLoopBreakers(3, clear);
  EXPECT_EQ(NumbersOf(clear, LinkState::kUsed), Numbers{0});
}

TEST(ThrowOutTest, OfEquallyBadLinksTheOneOfFewerMatchesGoesFirst) {
  Links links = {Used(0, 1, {10, 0}, 0.5), Used(1, 2, {10, 0}, 1.0), Used(0, 2, {90, 0}, 0.5)};
  links[0].matches = 12;
  links[2].matches = 11;
  jqhost::ThrowOutLoopBreakers(3, links);
  // The third one is blamed; of 0.5 it leaves only what has more than 0.5 / 0.6.
  EXPECT_EQ(NumbersOf(links, LinkState::kUsed), Numbers{1});
}

TEST(ThrowOutTest, ASquareThatADiagonalHidIsFoundWhenThatGoes) {
  // The diagonal 0-2 closes neither triangle; without it the square does not close either,
  // by the fault of 2-3.
  Links links = {Used(0, 1, {10, 0}), Used(1, 2, {0, 10}), Used(2, 3, {-10, 20}, 0.5),
                 Used(0, 3, {0, 10}), Used(0, 2, {50, 50}, 0.4)};
  jqhost::ThrowOutLoopBreakers(4, links);
  EXPECT_EQ(NumbersOf(links, LinkState::kUsed), (Numbers{0, 1, 3}));
}

// Row 0 - 1 - 2 of the scene; a group 3 - 4 looks like 1 - 2 and was laid over it by sound
// links, although it belongs elsewhere.
TEST(ThrowOutTest, AGroupLaidOverAnotherGoesWhereThePicturesContradictIt) {
  Links links = {Used(0, 1, {50, 0}), Used(1, 2, {50, 0}),      Used(0, 2, {100, 0}),
                 Used(3, 4, {50, 0}), Used(0, 3, {52, 0}, 0.9), Used(0, 4, {102, 0}, 0.9)};
  Links unseen = links;
  EXPECT_EQ(jqhost::ThrowOutLoopBreakers(5, unseen), 0) << "the links close";

  const auto look = [](std::size_t a, std::size_t b, cv::Point2d shift) {
    EXPECT_LT(a, b);
    if (a == 1 && b == 3) {
      EXPECT_EQ(shift, cv::Point2d(2, 0));
    }
    return a > 0 && a < 3 && b > 2 ? jqhost::SideView::kContradicts : jqhost::SideView::kTooFar;
  };
  jqhost::ThrowOutLoopBreakers(5, links, look);
  EXPECT_EQ(NumbersOf(links, LinkState::kUsed), (Numbers{0, 1, 2, 3}));
}

TEST(ThrowOutTest, AnEndThatLooksRightVouchesForItsLinks) {
  // 0-2 is off and blamed; 0-1 and 1-3 have no loop of links, but 0 and 3 look right.
  Links links = {Used(0, 1, {50, 0}, 0.7), Used(1, 3, {0, 50}, 0.7), Used(1, 2, {50, 0}, 0.7),
                 Used(0, 2, {60, 0}, 0.6)};
  const auto look = [](std::size_t a, std::size_t b, cv::Point2d) {
    return a == 0 && b == 3 ? jqhost::SideView::kAgrees : jqhost::SideView::kTooFar;
  };
  jqhost::ThrowOutLoopBreakers(4, links, look);
  EXPECT_EQ(NumbersOf(links, LinkState::kUsed), (Numbers{0, 1}));
}

}  // namespace
}  // namespace jqhost_test

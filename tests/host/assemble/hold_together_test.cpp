// Which links hold frames together.
#include "host/assemble/hold_together.h"

#include <gtest/gtest.h>

#include "graph_support.h"

namespace jqhost_test {
namespace {

using jqhost::HoldTogether;
using jqhost::Link;
using jqhost::LinkGrade;
using jqhost::LinkState;
using jqhost::Places;
using Links = std::vector<Link>;
using Numbers = std::vector<std::size_t>;

constexpr LinkGrade kWeak = LinkGrade::kWeak;
constexpr LinkGrade kDoubtful = LinkGrade::kDoubtful;
const cv::Size kFrame(100, 100);

TEST(HoldTogetherTest, AWeakLinkAloneHoldsNothing) {
  Links links = {MakeLink(0, 1, {50, 0}), MakeLink(1, 2, {50, 0}, 0.9, kWeak)};
  EXPECT_EQ(HoldTogether(3, kFrame, links).islands, 2U);
  EXPECT_EQ(NumbersOf(links, LinkState::kUsed), Numbers{0});
}

TEST(HoldTogetherTest, TwoWeakLinksThatAgreeHoldAFrame) {
  // 2 lies at (50, 50) by both, give or take two pixels.
  Links links = {MakeLink(0, 1, {50, 0}), MakeLink(0, 2, {50, 51}, 0.9, kWeak),
                 MakeLink(1, 2, {0, 49}, 0.9, kWeak)};
  EXPECT_EQ(HoldTogether(3, kFrame, links).islands, 1U);
  EXPECT_EQ(NumbersOf(links, LinkState::kUsed), (Numbers{0, 1, 2}));

  Links apart = links;
  for (Link& link : apart) link.state = LinkState::kOpen;
  apart[1].shift.y = 53;  // 4 pixels off
  EXPECT_EQ(HoldTogether(3, kFrame, apart).islands, 2U);
}

TEST(HoldTogetherTest, TheSameFrameTwiceDoesNotVouchForItself) {
  // 1 and 2 are the same picture, so that both say the same of 0.
  Links links = {MakeLink(1, 2, {0, 0}), MakeLink(0, 1, {50, 0}, 0.9, kWeak),
                 MakeLink(0, 2, {50, 0}, 0.9, kWeak)};
  EXPECT_EQ(HoldTogether(3, kFrame, links).islands, 2U);
}

TEST(HoldTogetherTest, AgreementsThatAreEquallyManyDecideNothing) {
  // 0, 1, 2 and 3, 4, 5 in rows; two links put the second row below the first, two beside it.
  const Links rows = {MakeLink(0, 1, {50, 0}), MakeLink(1, 2, {50, 0}), MakeLink(3, 4, {50, 0}),
                      MakeLink(4, 5, {50, 0})};
  Links tie = rows;
  tie.push_back(MakeLink(0, 3, {0, 50}, 0.9, kWeak));
  tie.push_back(MakeLink(1, 4, {0, 50}, 0.9, kWeak));
  tie.push_back(MakeLink(1, 3, {20, 50}, 0.9, kWeak));
  tie.push_back(MakeLink(2, 4, {20, 50}, 0.9, kWeak));
  EXPECT_EQ(HoldTogether(6, kFrame, tie).islands, 2U);

  Links clear = rows;
  clear.insert(clear.end(), tie.begin() + 4, tie.end());
  clear.push_back(MakeLink(2, 5, {0, 50}, 0.9, kWeak));
  const Places places = HoldTogether(6, kFrame, clear);
  EXPECT_EQ(places.islands, 1U);
  EXPECT_NEAR(places.place[3].y, 50, 0.1);
  EXPECT_NEAR(places.place[3].x, 0, 0.1);
}

TEST(HoldTogetherTest, ARepeatingPatternIsDecidedByItsNeighbours) {
  // The pattern repeats every 20 pixels: 0-2 is a period off, 1-2 is right by luck, and 0-1
  // and 0-3-2 are sound.
  Links links = {MakeLink(0, 1, {50, 0}), MakeLink(0, 2, {70, 50}, 0.1, kDoubtful),
                 MakeLink(1, 2, {0, 50}, 0.1, kDoubtful), MakeLink(0, 3, {0, 50}),
                 MakeLink(3, 2, {50, 0})};
  const Places places = HoldTogether(4, kFrame, links);
  EXPECT_EQ(NumbersOf(links, LinkState::kUsed), (Numbers{0, 2, 3, 4}));
  EXPECT_NEAR(places.place[2].x, 50, 0.01);
}

TEST(HoldTogetherTest, DoubtfulLinksThatAgreeAmongThemselvesHoldNothing) {
  // Aliases of a pattern agree as well as right places do.
  Links links = {MakeLink(0, 1, {50, 0}), MakeLink(0, 2, {70, 50}, 0.3, kDoubtful),
                 MakeLink(1, 2, {20, 50}, 0.3, kDoubtful)};
  EXPECT_EQ(HoldTogether(3, kFrame, links).islands, 2U);
}

TEST(HoldTogetherTest, WhatAHintPredictsCounts) {
  for (const LinkGrade grade : {kWeak, kDoubtful}) {
    Links links = {MakeLink(0, 1, {50, 0}, 0.2, grade)};
    links[0].expected = true;
    EXPECT_EQ(HoldTogether(2, kFrame, links).islands, 1U);
  }
  Links nothing = {MakeLink(0, 1, {50, 0}, 0.2, LinkGrade::kWorthless)};
  nothing[0].expected = true;
  EXPECT_EQ(HoldTogether(2, kFrame, nothing).islands, 2U);
}

TEST(HoldTogetherTest, AWorthlessLinkIsNotUsedWhereItHappensToAgree) {
  Links links = {MakeLink(0, 1, {50, 0}), MakeLink(1, 2, {50, 0}),
                 MakeLink(0, 2, {100, 0}, 0, LinkGrade::kWorthless)};
  HoldTogether(3, kFrame, links);
  EXPECT_EQ(NumbersOf(links, LinkState::kUsed), (Numbers{0, 1}));
}

TEST(HoldTogetherTest, WeakLinksInALoopThatClosesAreUsed) {
  const Links row = {MakeLink(0, 1, {50, 0}, 0.9, kWeak), MakeLink(1, 2, {0, 50}, 0.9, kWeak)};
  Links closes = row;
  closes.push_back(MakeLink(0, 2, {51, 49}, 0.9, kWeak));
  EXPECT_EQ(HoldTogether(3, kFrame, closes).islands, 1U);
  Links open = row;
  open.push_back(MakeLink(0, 2, {55, 50}, 0.9, kWeak));
  EXPECT_EQ(HoldTogether(3, kFrame, open).islands, 3U);
  // The same with an end that looks right instead of the third link.
  Links seen = row;
  const auto agrees = [](std::size_t, std::size_t, cv::Point2d) {
    return jqhost::SideView::kAgrees;
  };
  EXPECT_EQ(HoldTogether(3, kFrame, seen, agrees).islands, 1U);
}

TEST(HoldTogetherTest, AFewMatchesThatNobodyConfirmsWhereTheyCouldHoldNothing) {
  const auto silent = [](std::size_t, std::size_t, cv::Point2d) {
    return jqhost::SideView::kSaysNothing;
  };
  const auto far = [](std::size_t, std::size_t, cv::Point2d) { return jqhost::SideView::kTooFar; };
  Links links = {MakeLink(0, 1, {50, 0}), MakeLink(1, 2, {0, 50})};
  links[1].matches = 39;
  Links enough = links, alone = links;
  enough[1].matches = 40;
  EXPECT_EQ(HoldTogether(3, kFrame, links, silent).islands, 2U);
  EXPECT_EQ(HoldTogether(3, kFrame, enough, silent).islands, 1U);
  EXPECT_EQ(HoldTogether(3, kFrame, alone, far).islands, 1U);
}

TEST(HoldTogetherTest, ALoneLinkWhoseFramesAgreeMuchLessThanOthersHoldsNothing) {
  // The median lacks 0.02 of 1, four times of which is 0.08; and 4 grey levels are more than
  // twice 1.9.
  const std::vector<std::pair<double, double>> cases = {{0.91, 4.0}, {0.93, 4.0}, {0.91, 3.7}};
  for (const auto& [agreement, difference] : cases) {
    Links links = {MakeLink(0, 1, {50, 0}), MakeLink(1, 2, {50, 0}), MakeLink(2, 3, {50, 0}),
                   MakeLink(3, 4, {50, 0})};
    for (Link& link : links) {
      link.agreement = 0.98;
      link.difference = 1.9;
      link.matches = 20;
    }
    links[3].agreement = agreement;
    links[3].difference = difference;
    const bool unlike = agreement < 0.92 && difference > 3.8;
    EXPECT_EQ(HoldTogether(5, kFrame, links).islands, unlike ? 2U : 1U);
  }
}

TEST(HoldTogetherTest, AWeakLinkBetweenIslandsCountsWhereAnotherPairLooksRight) {
  // Two islands of two; one link lays 2 below 0, and so 3 below 1.
  const Links links = {MakeLink(0, 1, {50, 0}), MakeLink(2, 3, {50, 0}),
                       MakeLink(0, 2, {0, 50}, 0.9, kWeak)};
  const auto islands = [&links](jqhost::SideView view) {
    Links copy = links;
    return HoldTogether(4, kFrame, copy,
                        [view](std::size_t a, std::size_t b, cv::Point2d) {
                          return a == 1 && b == 3 ? view : jqhost::SideView::kTooFar;
                        })
        .islands;
  };
  EXPECT_EQ(islands(jqhost::SideView::kAgrees), 1U);
  EXPECT_EQ(islands(jqhost::SideView::kSaysNothing), 2U);
  EXPECT_EQ(islands(jqhost::SideView::kContradicts), 2U);
}

TEST(HoldTogetherTest, UnlikeFramesCountWhereTwoPairsOfThemAgree) {
  // Two rows of three; weak links lay one below the other, with frames that differ a lot.
  Links rows = {MakeLink(0, 1, {50, 0}), MakeLink(1, 2, {50, 0}), MakeLink(3, 4, {50, 0}),
                MakeLink(4, 5, {50, 0})};
  for (Link& link : rows) {
    link.agreement = 0.98;
    link.difference = 2;
  }
  for (const std::size_t count : {1U, 2U}) {
    Links links = rows;
    for (std::size_t i = 0; i < count; ++i) {
      links.push_back(MakeLink(2 * i, 3 + 2 * i, {0, 50}, 0.9, kWeak));
      links.back().agreement = 0.85;
      links.back().difference = 9;
    }
    const Places places =
        HoldTogether(6, kFrame, links, [](std::size_t a, std::size_t b, cv::Point2d) {
          return a == 1 && b == 4 ? jqhost::SideView::kAgrees : jqhost::SideView::kTooFar;
        });
    EXPECT_EQ(places.islands, count == 1 ? 2U : 1U);
  }
}

}  // namespace
}  // namespace jqhost_test

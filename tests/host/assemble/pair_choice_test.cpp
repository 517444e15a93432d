// Which pairs are compared, and what hints say about them.
#include "host/assemble/pair_choice.h"

#include <gtest/gtest.h>

#include <fstream>

#include "graph_support.h"
#include "host/assemble/hints.h"
#include "host/input_error.h"
#include "jqstitch/run_program.h"

namespace jqhost_test {
namespace {

using jqhost::AssemblyHints;
using jqhost::GridHint;
using jqhost::GridOrder;
using jqhost::PairChoice;
using jqhost::PairExpectation;
using jqhost::PairToCompare;
using jqhost::Places;
using Pairs = std::vector<PairToCompare>;

std::vector<std::size_t> InOrder(std::size_t count) {
  std::vector<std::size_t> order(count);
  for (std::size_t i = 0; i < count; ++i) order[i] = i;
  return order;
}

// Frames a step apart in a row, all in one island; `lost` of them alone.
Places Row(std::size_t count, double step, std::size_t lost = 0) {
  Places places;
  for (std::size_t i = 0; i < count; ++i) {
    const bool isLost = i >= count - lost;
    places.island.push_back(isLost ? i - (count - lost) + 1 : 0);
    places.place.emplace_back(isLost ? 0.0 : static_cast<double>(i) * step, 0.0);
  }
  places.islands = lost + 1;
  return places;
}

TEST(PairChoiceTest, SixtyFramesAreAllComparedWithEachOther) {
  PairChoice choice(InOrder(60), {100, 100}, {});
  EXPECT_EQ(choice.First().size(), 60U * 59 / 2);
  EXPECT_TRUE(choice.Next(Row(60, 50)).empty());
}

TEST(PairChoiceTest, MoreBeginWithTheirNeighboursInTheList) {
  std::vector<std::size_t> order = InOrder(61);
  std::swap(order[0], order[60]);  // frame 60 is the first of the list, frame 0 the last
  PairChoice choice(order, {100, 100}, {});
  const Pairs pairs = choice.First();
  ASSERT_EQ(pairs.size(), 60U);
  EXPECT_EQ(pairs.front(), PairToCompare(1, 60));
  EXPECT_EQ(pairs[1], PairToCompare(1, 2));
  EXPECT_EQ(pairs.back(), PairToCompare(0, 59));
}

TEST(PairChoiceTest, ThenComeThoseThatOverlapByATenth) {
  // Steps of 45: the next but one overlaps by 10 pixels, the one after does not.
  PairChoice choice(InOrder(61), {100, 100}, {});
  choice.First();
  const Pairs likely = choice.Next(Row(61, 45));
  EXPECT_EQ(likely.size(), 59U);
  for (const PairToCompare& pair : likely) EXPECT_EQ(pair.second - pair.first, 2U);
  EXPECT_TRUE(choice.Next(Row(61, 45)).empty()) << "nothing is compared twice";
}

TEST(PairChoiceTest, WhatNothingHoldsIsComparedWithAllOthersInTheEnd) {
  PairChoice choice(InOrder(200), {100, 100}, {});
  choice.First();
  const Places places = Row(200, 95, 1);
  std::size_t pairs = 0, rounds = 0;
  for (Pairs next = choice.Next(places); !next.empty(); next = choice.Next(places), ++rounds) {
    for (const PairToCompare& pair : next) EXPECT_EQ(pair.second, 199U);
    pairs += next.size();
  }
  EXPECT_EQ(pairs, 198U) << "199 others, one of which was its neighbour";
  EXPECT_EQ(rounds, 4U);
}

TEST(PairChoiceTest, HintsSayWhichComeFirst) {
  PairChoice choice(InOrder(4), {100, 100},
                    [](std::size_t a, std::size_t b) { return b == a + 2; });
  EXPECT_EQ(choice.First(), (Pairs{{0, 2}, {1, 3}}));
}

TEST(HintsTest, TheOrdersOfAGrid) {
  // 3 columns, 2 rows:  0 1 2   0 1 2   0 2 4
  //                     3 4 5   5 4 3   1 3 5
  const auto cells = [](GridOrder order) {
    std::vector<cv::Point> found;
    for (std::size_t i = 0; i < 6; ++i) found.push_back(GridHint{3, 2, order}.Cell(i));
    return found;
  };
  using Cells = std::vector<cv::Point>;
  EXPECT_EQ(cells(GridOrder::kRow), (Cells{{0, 0}, {1, 0}, {2, 0}, {0, 1}, {1, 1}, {2, 1}}));
  EXPECT_EQ(cells(GridOrder::kSnake), (Cells{{0, 0}, {1, 0}, {2, 0}, {2, 1}, {1, 1}, {0, 1}}));
  EXPECT_EQ(cells(GridOrder::kColumn), (Cells{{0, 0}, {0, 1}, {1, 0}, {1, 1}, {2, 0}, {2, 1}}));
}

TEST(HintsTest, AGridNamesNeighboursAndWithAnOverlapTheirShift) {
  AssemblyHints hints;
  hints.grid = GridHint{3, 3, GridOrder::kRow};
  const cv::Size frame(200, 100);
  EXPECT_TRUE(ExpectPair(hints, 0, 4, frame).neighbours);
  EXPECT_FALSE(ExpectPair(hints, 0, 2, frame).neighbours);
  EXPECT_FALSE(ExpectPair(hints, 0, 4, frame).shift);
  hints.overlap = 0.25;
  const PairExpectation diagonal = ExpectPair(hints, 4, 0, frame);
  EXPECT_EQ(*diagonal.shift, cv::Point2d(-150, -75));
  EXPECT_DOUBLE_EQ(diagonal.tolerance, 20);
  EXPECT_FALSE(ExpectPair(hints, 0, 2, frame).neighbours);
  hints.overlap = 0.6;
  EXPECT_TRUE(ExpectPair(hints, 0, 2, frame).neighbours) << "two steps of 40 % still overlap";
}

TEST(HintsTest, PositionsSayWhoOverlapsAndAFrameWithoutOneIsNotKnown) {
  AssemblyHints hints;
  hints.positions = {cv::Point2d(0, 0), cv::Point2d(-150, 30), cv::Point2d(0, 100), std::nullopt};
  const cv::Size frame(200, 100);
  EXPECT_TRUE(ExpectPair(hints, 0, 1, frame).neighbours);
  EXPECT_EQ(*ExpectPair(hints, 0, 1, frame).shift, cv::Point2d(-150, 30));
  EXPECT_FALSE(ExpectPair(hints, 0, 2, frame).neighbours);
  EXPECT_FALSE(ExpectPair(hints, 0, 3, frame).neighbours);
  EXPECT_FALSE(ExpectPair(hints, 0, 3, frame).shift);
}

TEST(HintsTest, PositionsAreReadByFileNameInTheirUnit) {
  const jqstitch_test::TemporaryFolder folder;
  const std::string path = folder / "stage.csv";
  std::ofstream(path) << "file,x,y\nb.png,10,-2.5\n";
  const auto positions = jqhost::ReadPositions(path, {"in/a.png", "in/b.png"}, 4);
  ASSERT_EQ(positions.size(), 2U);
  EXPECT_FALSE(positions[0]);
  EXPECT_EQ(*positions[1], cv::Point2d(40, -10));
  EXPECT_THROW(jqhost::ReadPositions(path, {"c.png"}, 1), jqhost::InputError);
  EXPECT_THROW(jqhost::ReadPositions(folder / "none.csv", {"b.png"}, 1), jqhost::InputError);
}

}  // namespace
}  // namespace jqhost_test

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"

namespace {

using Points = std::vector<cv::Point>;

cv::Mat Rows(std::initializer_list<std::initializer_list<int>> rows) {
  cv::Mat matrix(static_cast<int>(rows.size()), static_cast<int>(rows.begin()->size()), CV_16UC1);
  int r = 0;
  for (const auto& row : rows) {
    int c = 0;
    for (int value : row) matrix.at<std::uint16_t>(r, c++) = static_cast<std::uint16_t>(value);
    ++r;
  }
  return matrix;
}

template <class Engine>
class Matching : public EngineTest<Engine> {
 protected:
  Points Pairs(const cv::Mat& first, const cv::Mat& second) {
    Points pairs;
    this->engine.CalacDistanceIndexFun(first, second, pairs);
    return pairs;
  }
};
TYPED_TEST_SUITE(Matching, Engines, EngineNames);

TYPED_TEST(Matching, IdenticalDistinctRowsPairWithThemselves) {
  const cv::Mat rows = Rows({{1, 2, 3}, {40, 50, 60}, {7, 0, 9}, {100, 1, 5}});
  EXPECT_TRUE(SamePoints(this->Pairs(rows, rows.clone()), {{0, 0}, {1, 1}, {2, 2}, {3, 3}}));
}

TYPED_TEST(Matching, TwoExactDuplicatesAreRejected) {
  EXPECT_TRUE(this->Pairs(Rows({{5, 5}, {5, 5}, {90, 1}}), Rows({{5, 5}})).empty());
}

TYPED_TEST(Matching, TwoRowsMayPickTheSameNearest) {
  EXPECT_TRUE(SamePoints(this->Pairs(Rows({{90, 90}, {10, 10}}), Rows({{11, 10}, {10, 12}})),
                         {{0, 1}, {1, 1}}));
}

TYPED_TEST(Matching, SingleFirstDescriptorMatchesNothing) {
  EXPECT_TRUE(this->Pairs(Rows({{5, 5}}), Rows({{5, 5}, {6, 6}})).empty());
}

TYPED_TEST(Matching, NoRowsLeaveTheListAlone) {
  const cv::Mat some = Rows({{1, 2}, {3, 4}});
  const cv::Mat none(0, 2, CV_16UC1);
  Points pairs = {{9, 9}};
  this->engine.CalacDistanceIndexFun(some, none, pairs);
  this->engine.CalacDistanceIndexFun(none, some, pairs);
  this->engine.CalacDistanceIndexFun(none, none, pairs);
  EXPECT_TRUE(SamePoints(pairs, {{9, 9}}));
}

TYPED_TEST(Matching, PairsAreAppended) {
  Points pairs = {{9, 9}};
  this->engine.CalacDistanceIndexFun(Rows({{1, 2}, {30, 40}}), Rows({{1, 2}}), pairs);
  EXPECT_TRUE(SamePoints(pairs, {{9, 9}, {0, 0}}));
}

// Squared distances 49 and 50: exactly 0.98, and the test is strict.
TYPED_TEST(Matching, RatioOfExactly98PercentIsRejected) {
  EXPECT_TRUE(this->Pairs(Rows({{7, 0}, {7, 1}}), Rows({{0, 0}})).empty());
  EXPECT_TRUE(this->Pairs(Rows({{7, 1}, {7, 0}}), Rows({{0, 0}})).empty());
}

// Squared distances 97 and 100. The ratio of the plain distances is above 0.98.
TYPED_TEST(Matching, RatioIsTakenOnSquaredDistances) {
  EXPECT_TRUE(SamePoints(this->Pairs(Rows({{10, 0}, {9, 4}}), Rows({{0, 0}})), {{0, 1}}));
}

TYPED_TEST(Matching, FewerColumnsInTheFirstRaise) {
  Points pairs = {{9, 9}};
  EXPECT_EQ(Ending([&] {
              this->engine.CalacDistanceIndexFun(Rows({{1}, {2}}), Rows({{1, 2}}), pairs);
            }),
            Outcome::kImageLibraryError);
  EXPECT_TRUE(SamePoints(pairs, {{9, 9}}));
}

TYPED_TEST(Matching, FurtherColumnsOfTheFirstAreIgnored) {
  EXPECT_TRUE(SamePoints(this->Pairs(Rows({{1, 2, 900}, {30, 40, 0}}), Rows({{1, 2}})), {{0, 0}}));
}

TYPED_TEST(Matching, DescriptorsKeepTheirType) {
  cv::Mat rows = Rows({{1, 2}, {30, 40}});
  const cv::Mat before = rows.clone();
  this->Pairs(rows, rows);
  EXPECT_TRUE(SameMatrix(rows, before));
}

template <class Engine>
class MatchedPoints : public EngineTest<Engine> {};
TYPED_TEST_SUITE(MatchedPoints, Engines, EngineNames);

TYPED_TEST(MatchedPoints, PairsBecomePointsInListOrder) {
  const Points first = {{1, 1}, {2, 2}, {3, 3}};
  const Points second = {{10, 10}, {20, 20}};
  Points m1 = {{-1, -1}};
  Points m2;
  this->engine.RoughMatchPoint(first, second, {{1, 2}, {0, 2}, {1, 0}}, m1, m2);
  EXPECT_TRUE(SamePoints(m1, {{-1, -1}, {3, 3}, {3, 3}, {1, 1}}));
  EXPECT_TRUE(SamePoints(m2, {{20, 20}, {10, 10}, {20, 20}}));
}

TYPED_TEST(MatchedPoints, OneListForBothOutputsTakesThemInTurn) {
  const Points first = {{1, 1}, {2, 2}};
  const Points second = {{10, 10}, {20, 20}};
  Points both;
  this->engine.RoughMatchPoint(first, second, {{1, 0}, {0, 1}}, both, both);
  EXPECT_TRUE(SamePoints(both, {{1, 1}, {20, 20}, {2, 2}, {10, 10}}));
}

TYPED_TEST(MatchedPoints, NoPairsLeaveTheListsAlone) {
  Points m1 = {{1, 2}};
  Points m2 = {{3, 4}};
  this->engine.RoughMatchPoint({{9, 9}}, {{9, 9}}, {}, m1, m2);
  EXPECT_TRUE(SamePoints(m1, {{1, 2}}));
  EXPECT_TRUE(SamePoints(m2, {{3, 4}}));
}

TYPED_TEST(MatchedPoints, PairOutsideTheListsRaisesAndLeavesThem) {
  Points m1 = {{1, 2}};
  Points m2 = {{3, 4}};
  for (const cv::Point& bad :
       {cv::Point(1, 0), cv::Point(0, 1), cv::Point(-1, 0), cv::Point(0, -1)}) {
    EXPECT_EQ(Ending([&] {
                this->engine.RoughMatchPoint({{9, 9}}, {{9, 9}}, {{0, 0}, bad}, m1, m2);
              }),
              Outcome::kOutOfRange)
        << bad;
    EXPECT_TRUE(SamePoints(m1, {{1, 2}}));
    EXPECT_TRUE(SamePoints(m2, {{3, 4}}));
  }
}

}  // namespace

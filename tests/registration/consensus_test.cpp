#include <gtest/gtest.h>

#include <vector>

#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"

namespace {

using Points = std::vector<cv::Point>;

template <class Engine>
class Consensus : public EngineTest<Engine> {
 protected:
  void Run(const Points& first, const Points& second) {
    this->engine.RansacMatchPointArrayFun(first, second, i1, i2, tx, ty);
  }
  Points i1;
  Points i2;
  float tx = -77.0f;
  float ty = -78.0f;
};
TYPED_TEST_SUITE(Consensus, Engines, EngineNames);

TYPED_TEST(Consensus, SingleMatchIsItsOwnSupport) {
  this->Run({{12, 3}}, {{5, 8}});
  EXPECT_TRUE(SamePoints(this->i1, {{12, 3}}));
  EXPECT_TRUE(SamePoints(this->i2, {{5, 8}}));
  EXPECT_EQ(this->tx, 7.0f);
  EXPECT_EQ(this->ty, -5.0f);
}

TYPED_TEST(Consensus, EarlierOfTwoEqualHypothesesWins) {
  this->Run({{10, 10}, {20, 15}, {30, 40}}, {{0, 0}, {10, 5}, {0, 0}});
  EXPECT_TRUE(SamePoints(this->i1, {{10, 10}, {20, 15}}));
  EXPECT_TRUE(SamePoints(this->i2, {{0, 0}, {10, 5}}));
  EXPECT_EQ(this->tx, 10.0f);
  EXPECT_EQ(this->ty, 10.0f);
}

// Three exact matches at (0, 0) and one that differs from them.
TYPED_TEST(Consensus, RadiusIsFourAndStrict) {
  const struct {
    int dx;
    int dy;
    std::size_t support;
  } rows[] = {{3, 2, 4}, {-2, 3, 4}, {4, 0, 3}, {0, -4, 3}, {3, 3, 3}, {2, 3, 4}, {3, 0, 4}};
  for (const auto& row : rows) {
    this->i1.clear();
    this->i2.clear();
    this->Run({{1, 1}, {2, 2}, {3, 3}, {50 + row.dx, 60 + row.dy}},
              {{1, 1}, {2, 2}, {3, 3}, {50, 60}});
    EXPECT_EQ(this->i1.size(), row.support) << row.dx << ", " << row.dy;
    EXPECT_EQ(this->tx, 0.0f);
    EXPECT_EQ(this->ty, 0.0f);
  }
}

TYPED_TEST(Consensus, EqualClustersGoToTheOneNamedFirst) {
  this->Run({{100, 0}, {0, 50}, {101, 1}, {2, 52}}, {{0, 0}, {0, 0}, {1, 1}, {2, 2}});
  EXPECT_EQ(this->tx, 100.0f);
  EXPECT_EQ(this->ty, 0.0f);
  EXPECT_TRUE(SamePoints(this->i1, {{100, 0}, {101, 1}}));
}

// The translation is the winner's own, not an average over its support.
TYPED_TEST(Consensus, TranslationIsNotRefined) {
  this->Run({{3, 0}, {0, 0}, {6, 0}}, {{0, 0}, {0, 0}, {0, 0}});
  EXPECT_EQ(this->tx, 3.0f);
  EXPECT_EQ(this->i1.size(), 3u);
}

TYPED_TEST(Consensus, NoMatchesWriteNothing) {
  this->Run({}, {{1, 1}});
  EXPECT_TRUE(this->i1.empty());
  EXPECT_TRUE(this->i2.empty());
  EXPECT_EQ(this->tx, -77.0f);
  EXPECT_EQ(this->ty, -78.0f);
}

TYPED_TEST(Consensus, InliersAreAppendedInAscendingOrder) {
  this->i1 = {{-1, -1}};
  this->i2 = {{-2, -2}};
  this->Run({{9, 9}, {500, 0}, {8, 8}, {7, 7}}, {{9, 9}, {0, 0}, {8, 8}, {7, 7}});
  EXPECT_TRUE(SamePoints(this->i1, {{-1, -1}, {9, 9}, {8, 8}, {7, 7}}));
  EXPECT_TRUE(SamePoints(this->i2, {{-2, -2}, {9, 9}, {8, 8}, {7, 7}}));
}

TYPED_TEST(Consensus, ShorterSecondListRaisesAndWritesNothing) {
  EXPECT_EQ(Ending([&] { this->Run({{1, 1}, {2, 2}}, {{1, 1}}); }), Outcome::kOutOfRange);
  EXPECT_TRUE(this->i1.empty());
  EXPECT_TRUE(this->i2.empty());
  EXPECT_EQ(this->tx, -77.0f);
  EXPECT_EQ(this->ty, -78.0f);
}

TYPED_TEST(Consensus, LongerSecondListIsFine) {
  this->Run({{1, 1}}, {{0, 0}, {5, 5}});
  EXPECT_EQ(this->tx, 1.0f);
  EXPECT_EQ(this->i2.size(), 1u);
}

}  // namespace

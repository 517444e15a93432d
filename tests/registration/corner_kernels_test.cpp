#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "registration/corner_pictures.h"
#include "registration/kernels/corners.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

using jqstitching::Candidate;

TEST(CornerLimit, FollowsTheBudgetFormula) {
  const struct {
    int level, budget, limit;
  } rows[] = {{1, 8, 500},  {2, 8, 420}, {3, 8, 340},  {4, 8, 260},   {7, 8, 20},
              {8, 8, -60},  {3, 7, 318}, {3, -8, 0},   {7, -7, 1},    {8, -7, -3},
              {3, -9, -21}, {0, 8, 580}, {-1, 8, 660}, {1, 100, 3375}};
  for (const auto& row : rows) {
    EXPECT_EQ(jqstitching::CornerLimit(row.level, row.budget), row.limit)
        << "level " << row.level << ", budget " << row.budget;
  }
  // (budget + 8) * 580 wraps in 32 bits.
  EXPECT_EQ(jqstitching::CornerLimit(0, 0x7fffffff), 253);  // 4060 / 16
}

// More than twice as strong suppresses, exactly twice does not.
TEST(SuppressionRadii, TwiceAsStrongIsNotEnough) {
  EXPECT_EQ(jqstitching::SuppressionRadii({{2.0f, {0, 0}}, {1.0f, {3, 4}}}),
            (std::vector<float>{65535.0f, 65535.0f}));
  EXPECT_EQ(jqstitching::SuppressionRadii({{2.0000002f, {0, 0}}, {1.0f, {3, 4}}}),
            (std::vector<float>{65535.0f, 25.0f}));
}

TEST(SuppressionRadii, AreCappedAndTakeTheNearest) {
  EXPECT_EQ(jqstitching::SuppressionRadii(
                {{1.0f, {0, 0}}, {9.0f, {256, 0}}, {1.0f, {256, 20}}, {2.5f, {260, 20}}}),
            (std::vector<float>{65535.0f, 65535.0f, 16.0f, 416.0f}));
}

TEST(LargestRadii, EqualOnesKeepListOrder) {
  EXPECT_EQ(jqstitching::LargestRadii({4, 65535, 9, 65535, 4, 9, 4}, 6),
            (std::vector<int>{1, 3, 2, 5, 0, 4}));
  EXPECT_TRUE(jqstitching::LargestRadii({4, 9}, 0).empty());
}

TEST(PreselectStrongest, EqualOnesKeepListOrder) {
  std::vector<Candidate> list;
  for (int k = 0; k < 10; ++k) list.push_back({k % 2 == 0 ? 3.0f : 7.0f, cv::Point(k, 0)});
  std::vector<Candidate> seven = list;
  jqstitching::PreselectStrongest(seven, 1);
  std::vector<int> order;
  for (const Candidate& c : seven) order.push_back(c.position.x);
  EXPECT_EQ(order, (std::vector<int>{1, 3, 5, 7, 9, 0, 2}));
  for (int limit : {2, -1}) {
    std::vector<Candidate> all = list;
    jqstitching::PreselectStrongest(all, limit);
    ASSERT_EQ(all.size(), 10u);
    EXPECT_EQ(all[0].position.x, 0);
  }
  jqstitching::PreselectStrongest(list, 0);
  EXPECT_TRUE(list.empty());
}

class CornerKernels : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(CornerKernels);

// By the rule itself, over coarse responses where ratios of exactly two are common.
TEST_P(CornerKernels, RadiiFollowTheRule) {
  Repeat(200, [](RandomSource& random) {
    std::vector<Candidate> list(random.Int(1, 90));
    for (Candidate& c : list) {
      c.response = static_cast<float>(random.Int(1, 12)) * 0.5f;
      c.position = cv::Point{random.Int(20, 400), random.Int(20, 400)};
    }
    const std::vector<float> radii = jqstitching::SuppressionRadii(list);
    ASSERT_EQ(radii.size(), list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
      int expected = 65535;
      for (const Candidate& other : list) {
        if (other.response > 2 * list[i].response) {
          const cv::Point d = other.position - list[i].position;
          expected = std::min(expected, d.dot(d));
        }
      }
      EXPECT_EQ(radii[i], static_cast<float>(expected)) << i << " of " << list.size();
    }
    const std::size_t count =
        static_cast<std::size_t>(random.Int(0, static_cast<int>(list.size())));
    std::vector<int> expected(list.size());
    std::iota(expected.begin(), expected.end(), 0);
    std::stable_sort(expected.begin(), expected.end(),
                     [&](int a, int b) { return radii[a] > radii[b]; });
    expected.resize(count);
    EXPECT_EQ(jqstitching::LargestRadii(radii, count), expected);
  });
}

// The sum in another order with its bound gives the candidates of the stated one.
TEST_P(CornerKernels, BoundedMeanGivesTheSameCandidates) {
  Repeat(120, [](RandomSource& random) {
    const cv::Mat picture =
        random.OneIn(6)
            ? RampWithBar(41 + 2 * random.Int(0, 6), 100)
            : pictures::Any(random, cv::Size{random.Int(41, 120), random.Int(41, 120)}, CV_8UC1);
    jqstitching::CornerScratch bounded;
    jqstitching::CornerScratch ordered;
    jqstitching::FindCandidates(picture, jqstitching::MeanSum::kBounded, bounded);
    jqstitching::FindCandidates(picture, jqstitching::MeanSum::kInOrder, ordered);
    ASSERT_EQ(bounded.candidates.size(), ordered.candidates.size());
    for (std::size_t k = 0; k < bounded.candidates.size(); ++k) {
      EXPECT_EQ(bounded.candidates[k].position, ordered.candidates[k].position);
      EXPECT_EQ(bounded.candidates[k].response, ordered.candidates[k].response);
    }
  });
}

}  // namespace

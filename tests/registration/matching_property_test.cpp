#include <gtest/gtest.h>

#include <vector>

#include "support/engine_pair.h"
#include "support/property_test.h"

namespace {

using Points = std::vector<cv::Point>;

class MatchingProperty : public PropertyTest {
 protected:
  // Rows of 16-bit bins or of floats; many are copies or near copies of others.
  static cv::Mat Descriptors(RandomSource& random, int rows, int cols, int depth, int high) {
    cv::Mat whole(rows + 2, cols + random.Int(0, 9), depth);
    cv::Mat numbers(whole.size(), CV_64F);
    for (int r = 0; r < numbers.rows; ++r) {
      for (int c = 0; c < numbers.cols; ++c) {
        numbers.at<double>(r, c) = random.Int(0, high) + (depth == CV_32F ? 0.25 * (c % 4) : 0.0);
      }
    }
    numbers.convertTo(whole, depth);
    for (int n = random.Int(0, 4); n > 0; --n) {
      whole.row(random.Int(0, rows + 1)).copyTo(whole.row(random.Int(0, rows + 1)));
    }
    return whole(cv::Rect(0, 1, cols, rows));
  }
};
JQ_AT_EVERY_CPU_LEVEL(MatchingProperty);

TEST_P(MatchingProperty, PairsEqualTheTwins) {
  Repeat(400, [](RandomSource& random) {
    // With values up to 65535 the sums exceed 2^24 and round term by term.
    const int highs[] = {1, 3, 60, 400, 5760, 65535};
    const int high = highs[random.Int(0, 5)];
    const int depth = random.OneIn(4) ? CV_32F : CV_16U;
    const int cols = random.OneIn(3) ? random.Int(1, 210) : 200;
    const int firstCols = random.OneIn(10) ? random.Int(1, 210) : cols;
    cv::Mat first = Descriptors(random, random.Int(0, 45), firstCols, depth, high);
    cv::Mat second = Descriptors(random, random.Int(0, 45), cols, depth, high);
    if (random.OneIn(3) && first.rows > 0 && firstCols == cols) {
      // Near copies of the first's rows: small distances, ratios round 0.98.
      for (int r = 0; r < second.rows; ++r) {
        first.row(random.Int(0, first.rows - 1)).copyTo(second.row(r));
        if (depth == CV_16U) second.at<unsigned short>(r, random.Int(0, cols - 1)) ^= 1;
      }
    }
    EnginePair engines;
    Points one(random.Int(0, 2), cv::Point(-1, -1));
    Points two = one;
    const Outcome library =
        Ending([&] { engines.library.CalacDistanceIndexFun(first, second, one); });
    const Outcome twin = Ending([&] { engines.twin.CalacDistanceIndexFun(first, second, two); });
    EXPECT_EQ(library, twin) << first.size() << ' ' << second.size();
    EXPECT_TRUE(SamePoints(one, two)) << first.size() << ' ' << second.size();
  });
}

TEST_P(MatchingProperty, MatchedPointsEqualTheTwins) {
  Repeat(200, [](RandomSource& random) {
    Points p1(random.Int(0, 9));
    Points p2(random.Int(0, 9));
    for (Points* list : {&p1, &p2}) {
      for (cv::Point& p : *list) p = cv::Point{random.Int(-99, 99), random.Int(-99, 99)};
    }
    Points pairs(random.Int(0, 12));
    const int slack = random.OneIn(4) || p1.empty() || p2.empty() ? 1 : 0;
    for (cv::Point& pair : pairs) {
      pair = cv::Point{random.Int(-slack, static_cast<int>(p2.size()) - 1 + slack),
                       random.Int(-slack, static_cast<int>(p1.size()) - 1 + slack)};
    }
    EnginePair engines;
    Points m1[2];
    Points m2[2];
    m1[0] = m1[1] = Points(random.Int(0, 2), cv::Point(5, 5));
    const Outcome library =
        Ending([&] { engines.library.RoughMatchPoint(p1, p2, pairs, m1[0], m2[0]); });
    const Outcome twin = Ending([&] { engines.twin.RoughMatchPoint(p1, p2, pairs, m1[1], m2[1]); });
    EXPECT_EQ(library, twin);
    EXPECT_TRUE(SamePoints(m1[0], m1[1]));
    EXPECT_TRUE(SamePoints(m2[0], m2[1]));
  });
}

}  // namespace

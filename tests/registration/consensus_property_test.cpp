#include <gtest/gtest.h>

#include <vector>

#include "support/engine_pair.h"
#include "support/property_test.h"

namespace {

using Points = std::vector<cv::Point>;

class ConsensusProperty : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(ConsensusProperty);

TEST_P(ConsensusProperty, EqualsTheTwin) {
  Repeat(400, [](RandomSource& random) {
    // Beyond 2^24 whole numbers are rounded as floats, so that a match may not
    // even agree with itself.
    const int reaches[] = {3, 30, 2000, 20000, 1 << 24, 1 << 26, 1 << 30};
    const int reach = reaches[random.Int(0, 6)];
    const int spread = random.Int(0, 9);
    Points shifts(random.Int(1, 5));
    for (cv::Point& s : shifts) {
      s = cv::Point{random.Int(-reach / 2, reach / 2), random.Int(-reach / 2, reach / 2)};
    }
    Points first(random.Int(0, random.OneIn(5) ? 150 : 30));
    Points second(first.size());
    for (std::size_t k = 0; k < first.size(); ++k) {
      second[k] = cv::Point{random.Int(-reach / 2, reach / 2), random.Int(-reach / 2, reach / 2)};
      const cv::Point shift = shifts[random.Int(0, static_cast<int>(shifts.size()) - 1)];
      const cv::Point error{random.Int(-spread, spread), random.Int(-spread, spread)};
      first[k] = second[k] + shift + error * (random.OneIn(2) ? 1 : 0);
    }
    if (random.OneIn(8) && !second.empty()) second.pop_back();
    if (random.OneIn(8)) second.push_back(cv::Point(1, 1));

    EnginePair engines;
    Points i1[2];
    Points i2[2];
    i1[0] = i1[1] = Points(random.Int(0, 2), cv::Point(5, 5));
    float tx[2] = {-7.5f, -7.5f};
    float ty[2] = {-8.5f, -8.5f};
    const Outcome library = Ending([&] {
      engines.library.RansacMatchPointArrayFun(first, second, i1[0], i2[0], tx[0], ty[0]);
    });
    const Outcome twin = Ending(
        [&] { engines.twin.RansacMatchPointArrayFun(first, second, i1[1], i2[1], tx[1], ty[1]); });
    SCOPED_TRACE(::testing::Message() << first.size() << " matches, reach " << reach);
    EXPECT_EQ(library, twin);
    EXPECT_TRUE(SamePoints(i1[0], i1[1]));
    EXPECT_TRUE(SamePoints(i2[0], i2[1]));
    EXPECT_TRUE(SameFloat(tx[0], tx[1]));
    EXPECT_TRUE(SameFloat(ty[0], ty[1]));
  });
}

}  // namespace

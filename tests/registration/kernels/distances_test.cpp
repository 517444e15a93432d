#include "registration/kernels/distances.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "support/property_test.h"
#include "support/rows.h"

namespace {

class Distances : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(Distances);

using jqstitching::PairedDescriptors;

// `count` descriptors of `bins` bins up to `high`, each a row.
cv::Mat Descriptors(RandomSource& random, int count, int bins, int high) {
  cv::Mat descriptors(count, bins, CV_16U);
  const bool extreme = random.OneIn(4);
  for (int r = 0; r < count; ++r) {
    for (int c = 0; c < bins; ++c) {
      const int bin = extreme ? (random.OneIn(2) ? high : 0) : random.Int(0, high);
      descriptors.at<std::uint16_t>(r, c) = static_cast<std::uint16_t>(bin);
    }
  }
  return descriptors;
}

TEST_P(Distances, AreSumsOfSquares) {
  Repeat(300, [](RandomSource& random) {
    const int count = random.Size(150);
    const int bins = random.OneIn(3) ? 200 : random.Int(1, 33);
    const int high = random.OneIn(2) ? 2000 : 20;
    const cv::Mat first = Descriptors(random, count, bins, high);
    const cv::Mat wanted = Descriptors(random, 1, bins, high);
    const PairedDescriptors paired(first);
    ASSERT_GE(paired.stride(), paired.count());
    std::vector<std::int32_t> expected;
    for (int k = 0; k < count; ++k) {
      std::int32_t sum = 0;
      for (int c = 0; c < bins; ++c) {
        const int d = wanted.at<std::uint16_t>(0, c) - first.at<std::uint16_t>(k, c);
        sum += d * d;
      }
      expected.push_back(sum);
    }
    rows::GuardedRow<std::int32_t> found(random, paired.stride());
    jqstitching::WholeDistances(paired, wanted.ptr<std::uint16_t>(), static_cast<std::size_t>(bins),
                                found.data());
    EXPECT_TRUE(rows::Same(found.data(), expected)) << bins << " bins";
    EXPECT_TRUE(found.Intact());
  });
}

TEST_P(Distances, TheFirstOfTheLeastAndTheLeastOfTheOthers) {
  Repeat(400, [](RandomSource& random) {
    std::vector<std::int32_t> values(static_cast<std::size_t>(1 + random.Size(200)));
    const int high = random.OneIn(2) ? 4 : std::numeric_limits<std::int32_t>::max();
    for (std::int32_t& value : values) value = random.Int(0, high);
    std::vector<std::int32_t> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    const auto nearest = jqstitching::FindNearest(values.data(), values.size());
    EXPECT_EQ(nearest.distance, sorted[0]);
    EXPECT_EQ(nearest.runnerUp, sorted[1]);
    EXPECT_EQ(nearest.index,
              static_cast<std::size_t>(std::find(values.begin(), values.end(), sorted[0]) -
                                       values.begin()));
  });
}

}  // namespace

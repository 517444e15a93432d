#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "overlap/kernels/blur_rows.h"
#include "support/property_test.h"
#include "support/rows.h"

using jqstitching::kBlurPadding;

namespace {

class MeasureRows : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(MeasureRows);

using Bytes = std::vector<std::uint8_t>;

TEST_P(MeasureRows, DifferencesAndTheirSum) {
  Repeat(300, [](RandomSource& random) {
    const int cols = rows::Width(random, 700);
    const Bytes first = rows::Bytes(random, cols);
    const Bytes second = rows::Bytes(random, cols);
    Bytes expected(cols);
    std::uint64_t sum = 0;
    for (int j = 0; j < cols; ++j) {
      expected[j] = static_cast<std::uint8_t>(std::abs(first[j] - second[j]));
      sum += expected[j];
    }
    rows::GuardedRow<std::uint8_t> out(random, cols + kBlurPadding);
    EXPECT_EQ(jqstitching::DifferenceRow(first.data(), second.data(), cols, out.data()), sum);
    EXPECT_TRUE(rows::Same(out.data(), expected));
    EXPECT_TRUE(out.Intact());
  });
}

TEST_P(MeasureRows, StrongEdgesAndTheirSumAndNumber) {
  Repeat(400, [](RandomSource& random) {
    const int begin = random.Int(1, 9);
    const int end = begin + rows::Width(random, 500);
    const Bytes above = rows::Bytes(random, end + 1);
    const Bytes row = rows::Bytes(random, end + 1);
    const Bytes below = rows::Bytes(random, end + 1);
    Bytes expected(end - begin);
    std::uint64_t sum = 0;
    int count = 0;
    for (int j = begin; j < end; ++j) {
      const auto down = [&](int c) { return above[c] + 2 * row[c] + below[c]; };
      const int response = 2 * down(j) - down(j - 1) - down(j + 1);
      if (response <= 10) continue;
      expected[j - begin] = static_cast<std::uint8_t>(std::min(response, 255));
      sum += expected[j - begin];
      ++count;
    }
    rows::GuardedRow<std::uint8_t> out(random, end - begin + kBlurPadding);
    const auto strong = jqstitching::EdgeRow(above.data(), row.data(), below.data(), begin, end,
                                             out.data() - begin);
    EXPECT_TRUE(rows::Same(out.data(), expected, begin));
    EXPECT_EQ(strong.sum, sum);
    EXPECT_EQ(strong.count, count);
    EXPECT_TRUE(out.Intact());
  });
}

// 10 is weak, 12 is strong (responses of one step are even), 255 is the most.
TEST_P(MeasureRows, TheWeakestStrongEdge) {
  for (const int sample : {1, 2, 255}) {
    Bytes row(203, 0), zero(203, 0);
    for (int j = 1; j < 202; j += 2) row[j] = static_cast<std::uint8_t>(sample);
    Bytes out(203 + kBlurPadding);
    // Odd columns weigh 1 + 2 samples downwards, and twice that across.
    const auto strong =
        jqstitching::EdgeRow(row.data(), row.data(), zero.data(), 1, 202, out.data());
    const int response = std::min(6 * sample, 255);
    EXPECT_EQ(strong.count, response > 10 ? 101 : 0) << sample;
    EXPECT_EQ(strong.sum, response > 10 ? 101u * response : 0u) << sample;
  }
}

}  // namespace

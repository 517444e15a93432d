#include "registration/kernels/corner_rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <vector>

#include "cpu/fused.h"
#include "support/property_test.h"
#include "support/rows.h"

using jqstitching::kMaps;
using jqstitching::kRowPadding;
using jqstitching::kTaps;

namespace {

class CornerRows : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(CornerRows);

using Bytes = std::vector<std::uint8_t>;
using Floats = std::vector<float>;

TEST_P(CornerRows, ProductsOfGradients) {
  Repeat(300, [](RandomSource& random) {
    const int begin = random.Int(1, 20);
    const int end = begin + rows::Width(random, 400);
    const Bytes a = rows::Bytes(random, end + 1);
    const Bytes m = rows::Bytes(random, end + 1);
    const Bytes b = rows::Bytes(random, end + 1);
    Floats expected[kMaps];
    for (int j = begin; j < end; ++j) {
      const int gx =
          std::abs(a[j + 1] + 2 * m[j + 1] + b[j + 1] - a[j - 1] - 2 * m[j - 1] - b[j - 1]) / 4;
      const int gy = std::abs(b[j - 1] + 2 * b[j] + b[j + 1] - a[j - 1] - 2 * a[j] - a[j + 1]) / 4;
      expected[0].push_back(static_cast<float>(gx * gx));
      expected[1].push_back(static_cast<float>(gy * gy));
      expected[2].push_back(static_cast<float>(gx * gy));
    }
    std::vector<rows::GuardedRow<float>> out;
    for (int k = 0; k < kMaps; ++k) out.emplace_back(random, end - begin + kRowPadding);
    float* const to[kMaps] = {out[0].data() - begin, out[1].data() - begin, out[2].data() - begin};
    jqstitching::ProductsRow(a.data(), m.data(), b.data(), begin, end, to);
    for (int k = 0; k < kMaps; ++k) {
      EXPECT_TRUE(rows::Same(out[k].data(), expected[k], begin)) << "map " << k;
      EXPECT_TRUE(out[k].Intact()) << "map " << k;
    }
  });
}

Floats Taps(RandomSource& random) {
  Floats taps(kTaps);
  for (float& tap : taps) tap = static_cast<float>(random.Int(1, 1 << 23)) / (1 << 25);
  return taps;
}

float Smooth(const float* const* samples, int j, const Floats& taps, bool fused) {
  float sum = taps[0] * samples[0][j];
  for (int k = 1; k < kTaps; ++k) {
    const float sample = samples[k][j];
    sum = fused ? std::fma(taps[k], sample, sum) : sum + taps[k] * sample;
  }
  return sum;
}

TEST_P(CornerRows, DownSmoothsTwoRowsInOrder) {
  Repeat(300, [](RandomSource& random) {
    const int begin = random.Int(0, 20);
    const int end = begin + rows::Width(random, 300);
    const bool fused = random.OneIn(2) && jqstitching::cpu::HasFused();
    const Floats taps = Taps(random);
    std::vector<Floats> samples;
    for (int k = 0; k <= kTaps; ++k) {
      samples.push_back(rows::Floats(random, end + kRowPadding, 65025));
    }
    const float* window[kTaps + 1];
    for (int k = 0; k <= kTaps; ++k) window[k] = samples[k].data();
    Floats expectedUpper, expectedLower;
    for (int j = begin; j < end; ++j) {
      expectedUpper.push_back(Smooth(window, j, taps, fused));
      expectedLower.push_back(Smooth(window + 1, j, taps, fused));
    }
    rows::GuardedRow<float> upper(random, end - begin + kRowPadding);
    rows::GuardedRow<float> lower(random, end - begin + kRowPadding);
    jqstitching::SmoothDown(window, taps.data(), begin, end, fused, upper.data() - begin,
                            lower.data() - begin);
    EXPECT_TRUE(rows::Same(upper.data(), expectedUpper, begin)) << "fused " << fused;
    EXPECT_TRUE(rows::Same(lower.data(), expectedLower, begin)) << "fused " << fused;
    EXPECT_TRUE(upper.Intact());
    EXPECT_TRUE(lower.Intact());
  });
}

TEST_P(CornerRows, AcrossSmoothsInOrder) {
  Repeat(300, [](RandomSource& random) {
    const int begin = random.Int(kTaps / 2, 20);
    const int end = begin + rows::Width(random, 300);
    const bool fused = random.OneIn(2) && jqstitching::cpu::HasFused();
    const Floats taps = Taps(random);
    const Floats row = rows::Floats(random, end + kTaps / 2 + kRowPadding, 65025);
    const float* window[kTaps];
    for (int k = 0; k < kTaps; ++k) window[k] = row.data() + k - kTaps / 2 + begin;
    Floats expected;
    for (int j = 0; j < end - begin; ++j) expected.push_back(Smooth(window, j, taps, fused));
    rows::GuardedRow<float> out(random, end - begin + kRowPadding);
    jqstitching::SmoothAcross(row.data(), taps.data(), begin, end, fused, out.data() - begin);
    EXPECT_TRUE(rows::Same(out.data(), expected, begin)) << "fused " << fused;
    EXPECT_TRUE(out.Intact());
  });
}

TEST_P(CornerRows, ResponsesAndTheirSum) {
  Repeat(300, [](RandomSource& random) {
    const int begin = random.Int(0, 20);
    const int end = begin + rows::Width(random, 400);
    const Floats xx = rows::Floats(random, end, 65025);
    const Floats yy = rows::Floats(random, end, 65025);
    const Floats xy = rows::Floats(random, end, 65025);
    Floats expected;
    double sum = 0;
    for (int j = begin; j < end; ++j) {
      const float det = xx[j] * yy[j] - xy[j] * xy[j];
      const float trace = xx[j] + yy[j];
      const double t = trace;
      const auto response = static_cast<float>(det + (t * -0.007) * t);
      expected.push_back(response > 0 ? response : 0.0f);
      sum += expected.back();
    }
    rows::GuardedRow<float> out(random, end - begin + kRowPadding);
    const double found =
        jqstitching::ResponseRow(xx.data(), yy.data(), xy.data(), begin, end, out.data() - begin);
    EXPECT_TRUE(rows::Same(out.data(), expected, begin));
    EXPECT_NEAR(found, sum, sum * 1e-12);  // added in another order
    EXPECT_TRUE(out.Intact());
  });
}

TEST_P(CornerRows, MaximaIncludeEqualNeighbours) {
  Repeat(400, [](RandomSource& random) {
    const int begin = random.Int(1, 20);
    const int end = begin + rows::Width(random, 400);
    const int highest = random.OneIn(2) ? 3 : 100000;  // few values: many equal ones
    std::vector<Floats> r;
    for (int k = 0; k < 3; ++k) r.push_back(rows::Floats(random, end + 1, highest));
    std::vector<int> expected;
    for (int j = begin; j < end; ++j) {
      bool largest = r[1][j] > 0;
      for (int k = 0; k < 9; ++k) largest = largest && r[1][j] >= r[k / 3][j - 1 + k % 3];
      if (largest) expected.push_back(j);
    }
    rows::GuardedRow<int> found(random, end - begin);
    const std::size_t count =
        jqstitching::MaximaRow(r[0].data(), r[1].data(), r[2].data(), begin, end, found.data());
    ASSERT_EQ(count, expected.size()) << "columns [" << begin << ", " << end << ")";
    EXPECT_TRUE(rows::Same(found.data(), expected));
    EXPECT_TRUE(found.Intact());
  });
}

}  // namespace

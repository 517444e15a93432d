#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "blend/kernels/row_layout.h"
#include "blend/kernels/weight_row.h"
#include "support/compare.h"
#include "support/property_test.h"

namespace {

class WeightKernel : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(WeightKernel);

// By the image library's matrix expressions.
cv::Mat Expected(const cv::Mat& a, const cv::Mat& b) {
  const cv::Mat share = 255.0 * a / (a + b);
  cv::Mat weight;
  share.convertTo(weight, CV_8U, 1.0, 0.0);
  return weight;
}

void Check(const std::vector<float>& a, const std::vector<float>& b, float cap) {
  const int cols = static_cast<int>(a.size());
  const std::size_t padded = jqstitching::PaddedCols(cols);
  std::vector<float> aRow(padded, 0.0f);
  std::vector<float> bRow(padded, 0.0f);
  std::copy(a.begin(), a.end(), aRow.begin());
  std::copy(b.begin(), b.end(), bRow.begin());
  std::vector<std::uint8_t> weight(padded + 64, 77);
  jqstitching::WeightRow(aRow.data(), bRow.data(), cap, weight.data(), cols);
  const cv::Mat capped = cv::min(cv::Mat(b).reshape(1, 1), cap);
  ASSERT_TRUE(SameMatrix(cv::Mat(1, cols, CV_8U, weight.data()),
                         Expected(cv::Mat(a).reshape(1, 1), capped)));
  for (std::size_t k = padded; k < weight.size(); ++k) ASSERT_EQ(weight[k], 77);
}

// Distances of k straight and n diagonal steps.
float Distance(RandomSource& random) {
  if (random.OneIn(5)) return random.OneIn(2) ? 0.0f : 255.0f;
  float d = 0.0f;
  for (int k = random.Int(0, random.OneIn(2) ? 20 : 1300); k > 0; --k) {
    d = std::min(255.0f, d + (random.OneIn(3) ? 0.3f : 0.2f));
  }
  return d;
}

TEST_P(WeightKernel, KnownAnswers) {
  const std::vector<float> a = {0.0f, 0.0f, 255.0f, 2.0f, 0.2f, 255.0f};
  const std::vector<float> b = {0.0f, 9.0f, 0.0f, 1.0f, 0.2f, 255.0f};
  const std::vector<int> wanted = {0, 0, 255, 170, 128, 128};  // 127.5 goes to the even side
  std::vector<float> aRow(16, 0.0f);
  std::vector<float> bRow(16, 0.0f);
  std::vector<std::uint8_t> weight(16);
  std::copy(a.begin(), a.end(), aRow.begin());
  std::copy(b.begin(), b.end(), bRow.begin());
  jqstitching::WeightRow(aRow.data(), bRow.data(), 255.0f, weight.data(), 6);
  for (std::size_t k = 0; k < a.size(); ++k) EXPECT_EQ(weight[k], wanted[k]) << k;
}

TEST_P(WeightKernel, HalvesGoToTheEvenSide) {
  // a / (a + b) = (2k + 1) / 510 is a half for every k.
  std::vector<float> a;
  std::vector<float> b;
  for (int k = 0; k < 255; ++k) {
    for (const float scale : {1.0f, 0.5f, 0.25f, 0.0625f}) {
      a.push_back((2 * k + 1) * scale * 0.5f);
      b.push_back((509 - 2 * k) * scale * 0.5f);
    }
  }
  Check(a, b, 255.0f);
}

TEST_P(WeightKernel, EqualsTheMatrixExpression) {
  Repeat(300, [](RandomSource& random) {
    std::vector<float> a(random.Size(500));
    std::vector<float> b(a.size());
    const bool mostlyEmpty = random.OneIn(3);
    for (float& d : a) d = mostlyEmpty && !random.OneIn(40) ? 0.0f : Distance(random);
    for (float& d : b) d = Distance(random);
    Check(a, b, random.OneIn(2) ? 255.0f : Distance(random));
  });
}

TEST_P(WeightKernel, TripledWeightsStandThreeTimes) {
  Repeat(50, [](RandomSource& random) {
    const int cols = random.Size(300);
    const std::size_t padded = jqstitching::PaddedCols(cols);
    std::vector<std::uint8_t> weight(padded);
    for (std::uint8_t& w : weight) w = static_cast<std::uint8_t>(random.Int(0, 255));
    std::vector<std::uint8_t> tripled(3 * padded + 64, 77);
    jqstitching::TripleWeights(weight.data(), tripled.data(), cols);
    for (int k = 0; k < 3 * cols; ++k) ASSERT_EQ(tripled[k], weight[k / 3]) << k;
    for (std::size_t k = 3 * padded; k < tripled.size(); ++k) ASSERT_EQ(tripled[k], 77) << k;
  });
}

}  // namespace

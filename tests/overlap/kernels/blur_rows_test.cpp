#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "cpu/fused.h"
#include "overlap/kernels/blur_rows.h"
#include "support/property_test.h"
#include "support/rows.h"

using jqstitching::kBlurPadding;
using jqstitching::kBlurTaps;

namespace {

class BlurRows : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(BlurRows);

// The Gaussian's taps, or any that keep the sums below 2^31.
std::vector<float> Taps(RandomSource& random) {
  std::vector<float> taps(kBlurTaps);
  const cv::Mat gaussian = cv::getGaussianKernel(kBlurTaps, 1.0, CV_64F);
  const bool any = random.OneIn(3);
  for (int k = 0; k < kBlurTaps; ++k) {
    const float free = static_cast<float>(random.Int(0, 1 << 20)) / (1 << 21);
    taps[k] = any ? free : static_cast<float>(gaussian.at<double>(k));
  }
  return taps;
}

float Blurred(const float* const* samples, int j, const std::vector<float>& taps, bool fused) {
  float sum = taps[0] * samples[0][j];
  for (int k = 1; k < kBlurTaps; ++k) {
    const float sample = samples[k][j];
    sum = fused ? std::fma(taps[k], sample, sum) : sum + taps[k] * sample;
  }
  return std::min(std::nearbyint(sum), 255.0f);
}

TEST_P(BlurRows, WideningKeepsEveryByte) {
  Repeat(200, [](RandomSource& random) {
    const int cols = rows::Width(random, 300);
    const std::vector<std::uint8_t> samples = rows::Bytes(random, cols);
    rows::GuardedRow<float> out(random, cols + kBlurPadding);
    jqstitching::WidenRow(samples.data(), cols, out.data());
    EXPECT_TRUE(rows::Same(out.data(), std::vector<float>(samples.begin(), samples.end())));
    EXPECT_TRUE(out.Intact());
  });
}

TEST_P(BlurRows, DownAddsTheTapsInOrder) {
  Repeat(300, [](RandomSource& random) {
    const int cols = rows::Width(random, 300);
    const bool fused = random.OneIn(2) && jqstitching::cpu::HasFused();
    const std::vector<float> taps = Taps(random);
    std::vector<std::vector<float>> samples;
    const float* window[kBlurTaps];
    for (int k = 0; k < kBlurTaps; ++k) {
      samples.push_back(rows::Floats(random, cols + kBlurPadding, 255));
    }
    for (int k = 0; k < kBlurTaps; ++k) window[k] = samples[k].data();
    std::vector<float> expected(cols);
    for (int j = 0; j < cols; ++j) expected[j] = Blurred(window, j, taps, fused);
    rows::GuardedRow<float> out(random, cols + kBlurPadding);
    jqstitching::BlurDown(window, taps.data(), cols, fused, out.data());
    EXPECT_TRUE(rows::Same(out.data(), expected)) << "fused " << fused;
    EXPECT_TRUE(out.Intact());
  });
}

TEST_P(BlurRows, AcrossAddsTheTapsInOrder) {
  Repeat(300, [](RandomSource& random) {
    const int cols = rows::Width(random, 300);
    const bool fused = random.OneIn(2) && jqstitching::cpu::HasFused();
    const std::vector<float> taps = Taps(random);
    constexpr int kReach = kBlurTaps / 2;
    const std::vector<float> row = rows::Floats(random, cols + 2 * kReach + kBlurPadding, 255);
    const float* window[kBlurTaps];
    for (int k = 0; k < kBlurTaps; ++k) window[k] = row.data() + k;
    std::vector<std::uint8_t> expected(cols);
    for (int j = 0; j < cols; ++j) {
      expected[j] = static_cast<std::uint8_t>(Blurred(window, j, taps, fused));
    }
    rows::GuardedRow<std::uint8_t> out(random, cols + kBlurPadding);
    jqstitching::BlurAcross(row.data() + kReach, taps.data(), cols, fused, out.data());
    EXPECT_TRUE(rows::Same(out.data(), expected)) << "fused " << fused;
    EXPECT_TRUE(out.Intact());
  });
}

// 0.5, 1.5 and 2.5 go to the even side, and what passes 255 stays there.
TEST_P(BlurRows, HalvesGoToTheEvenSideAndSumsAreCut) {
  const float half[kBlurTaps] = {0.5f, 0.0f, 0.0f, 0.0f, 0.0f};
  const float twice[kBlurTaps] = {1.0f, 1.0f, 0.0f, 0.0f, 0.0f};
  const std::vector<float> samples = {1, 3, 5, 255, 128, 0};
  std::vector<float> row(samples);
  row.resize(samples.size() + kBlurPadding);
  const float* window[kBlurTaps] = {row.data(), row.data(), row.data(), row.data(), row.data()};
  std::vector<float> out(row.size());
  jqstitching::BlurDown(window, half, 6, false, out.data());
  EXPECT_TRUE(rows::Same(out.data(), std::vector<float>{0, 2, 2, 128, 64, 0}));
  jqstitching::BlurDown(window, twice, 6, false, out.data());
  EXPECT_TRUE(rows::Same(out.data(), std::vector<float>{2, 6, 10, 255, 255, 0}));
}

}  // namespace

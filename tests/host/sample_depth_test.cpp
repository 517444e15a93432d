#include "host/source/sample_depth.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace jqhost_test {
namespace {

TEST(SampleDepth, TheSmallestThatHoldsTheLargestSample) {
  const std::vector<std::pair<int, int>> table = {{0, 8},      {255, 8},   {256, 10},  {1023, 10},
                                                  {1024, 12},  {4095, 12}, {4096, 14}, {16383, 14},
                                                  {16384, 16}, {65535, 16}};
  for (const auto& [sample, bits] : table) {
    EXPECT_EQ(jqhost::SmallestDepth(sample), bits) << sample;
    cv::Mat picture(3, 5, CV_16UC3, cv::Scalar::all(0));
    picture.at<cv::Vec3w>(2, 4)[1] = static_cast<std::uint16_t>(sample);
    EXPECT_EQ(jqhost::LargestSample(picture), sample);
  }
}

TEST(SampleDepth, TheEightHighestBitsAreKept) {
  // 12 bits: sixteen samples share a grey level, and the largest is 255.
  cv::Mat picture(1, 6, CV_16UC1);
  const int samples[] = {0, 15, 16, 4079, 4080, 4095};
  const int expected[] = {0, 0, 1, 254, 255, 255};
  for (int i = 0; i < 6; ++i) picture.at<std::uint16_t>(0, i) = std::uint16_t(samples[i]);
  const cv::Mat scaled = jqhost::ScaleToEightBits(picture, 12);
  ASSERT_EQ(scaled.type(), CV_8UC1);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(scaled.at<std::uint8_t>(0, i), expected[i]) << samples[i];
}

TEST(SampleDepth, SamplesAboveTheDepthSaturate) {
  for (int bits : {8, 10, 12, 14}) {
    cv::Mat picture(1, 2, CV_16UC3, cv::Scalar::all(1 << bits));
    picture.at<cv::Vec3w>(0, 1) = cv::Vec3w(65535, 0, 65535);
    const cv::Mat scaled = jqhost::ScaleToEightBits(picture, bits);
    EXPECT_EQ(scaled.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 255, 255)) << bits;
    EXPECT_EQ(scaled.at<cv::Vec3b>(0, 1), cv::Vec3b(255, 0, 255)) << bits;
  }
}

// A view into a larger picture has rows further apart than they are long.
TEST(SampleDepth, RowsNeedNotBeAdjacent) {
  cv::Mat large(4, 8, CV_16UC1, cv::Scalar::all(60000));
  cv::Mat view = large(cv::Rect(2, 1, 3, 2));
  view.setTo(300);
  EXPECT_EQ(jqhost::LargestSample(view), 300);
  EXPECT_EQ(jqhost::ScaleToEightBits(view, 10).at<std::uint8_t>(1, 2), 75);
}

TEST(SampleDepth, OtherSamplesAreRefusedByName) {
  const std::vector<std::pair<int, const char*>> table = {{CV_32F, "32-bit float samples"},
                                                          {CV_64F, "64-bit float samples"},
                                                          {CV_16S, "signed 16-bit samples"},
                                                          {CV_32S, "32-bit integer samples"},
                                                          {CV_8S, "signed 8-bit samples"}};
  for (const auto& [depth, words] : table) {
    const std::string why = jqhost::WhyNotSamples(cv::Mat(2, 2, depth));
    EXPECT_NE(why.find(words), std::string::npos) << why;
  }
  EXPECT_EQ(jqhost::WhyNotSamples(cv::Mat(2, 2, CV_8UC3)), "");
  EXPECT_EQ(jqhost::WhyNotSamples(cv::Mat(2, 2, CV_16UC1)), "");
}

}  // namespace
}  // namespace jqhost_test

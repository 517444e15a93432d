#include "host/source/genicam_pixels.h"

#include <gtest/gtest.h>

#include <vector>

namespace jqhost {
namespace {

constexpr std::uint32_t kMono8 = 0x01080001, kMono12 = 0x01100005, kRgb8 = 0x02180014;

TEST(GenicamPixelsTest, GreyOfOneAndTwoBytes) {
  std::string why;
  const std::vector<unsigned char> bytes = {1, 2, 3, 0x34, 0x0F, 0xFF};
  cv::Mat frame = FrameFromBuffer(kMono8, bytes.data(), bytes.size(), cv::Size(3, 2), why);
  ASSERT_EQ(frame.type(), CV_8UC1);
  EXPECT_EQ(frame.at<unsigned char>(1, 0), 0x34);
  EXPECT_NE(frame.data, bytes.data());
  frame = FrameFromBuffer(kMono12, bytes.data(), bytes.size(), cv::Size(1, 3), why);
  ASSERT_EQ(frame.type(), CV_16UC1);
  EXPECT_EQ(frame.at<std::uint16_t>(0, 0), 0x0201);
  EXPECT_EQ(frame.at<std::uint16_t>(2, 0), 0xFF0F);
  frame = FrameFromBuffer(kRgb8, bytes.data(), bytes.size(), cv::Size(2, 1), why);
  ASSERT_EQ(frame.type(), CV_8UC3);
  EXPECT_EQ(frame.at<cv::Vec3b>(0, 0), cv::Vec3b(3, 2, 1));
  EXPECT_TRUE(why.empty());
}

// A field of one colour seen through each filter: every pixel has that colour again.
TEST(GenicamPixelsTest, ColourFiltersByTheirFirstTwoPixels) {
  const struct {
    std::uint32_t format;
    const char* rows[2];
  } filters[] = {{0x01080008, {"GR", "BG"}},
                 {0x01080009, {"RG", "GB"}},
                 {0x0108000A, {"GB", "RG"}},
                 {0x0108000B, {"BG", "GR"}}};
  for (const auto& filter : filters) {
    SCOPED_TRACE(filter.rows[0]);
    std::vector<unsigned char> bytes;
    for (int y = 0; y < 6; ++y) {
      for (int x = 0; x < 8; ++x) {
        const char colour = filter.rows[y % 2][x % 2];
        bytes.push_back(colour == 'R' ? 200 : colour == 'G' ? 100 : 50);
      }
    }
    std::string why;
    const cv::Mat frame =
        FrameFromBuffer(filter.format, bytes.data(), bytes.size(), cv::Size(8, 6), why);
    ASSERT_EQ(frame.type(), CV_8UC3);
    EXPECT_EQ(cv::norm(frame, cv::Mat(6, 8, CV_8UC3, cv::Scalar(50, 100, 200)), cv::NORM_INF), 0);
  }
}

TEST(GenicamPixelsTest, WhatCannotBeUsedSaysWhy) {
  const unsigned char bytes[6] = {};
  std::string why;
  EXPECT_TRUE(FrameFromBuffer(kMono8, bytes, 5, cv::Size(3, 2), why).empty());
  EXPECT_EQ(why, "it came incomplete");
  EXPECT_TRUE(FrameFromBuffer(kMono8, bytes, 6, cv::Size(0, 2), why).empty());
  EXPECT_TRUE(FrameFromBuffer(kMono8, nullptr, 6, cv::Size(3, 2), why).empty());
  EXPECT_TRUE(FrameFromBuffer(0x010C0047, bytes, 6, cv::Size(2, 2), why).empty());
  EXPECT_EQ(why, "its pixel format 0x010C0047 is not known");
}

}  // namespace
}  // namespace jqhost

#include "host/verdict/doubt/placement_view.h"

#include <gtest/gtest.h>

#include "doubt_pictures.h"

using jqhost::PlacementView;

TEST(PlacementView, FactorBoundsTheLongerSide) {
  EXPECT_EQ(jqhost::ViewFactor({60, 50}), 4);
  EXPECT_EQ(jqhost::ViewFactor({768, 576}), 4);
  EXPECT_EQ(jqhost::ViewFactor({769, 576}), 5);
  EXPECT_EQ(jqhost::ViewFactor({960, 600}), 5);
  EXPECT_EQ(jqhost::ViewFactor({961, 600}), 6);
  EXPECT_EQ(jqhost::ViewFactor({600, 1201}), 7);
  EXPECT_EQ(jqhost::ViewFactor({2592, 1944}), 14);
}

TEST(PlacementView, LeavesOffTheRestOfOddSizes) {
  const PlacementView view = ViewOf(RandomScene({401, 305}, 1));
  EXPECT_EQ(view.samples.size(), cv::Size(100, 76));
}

TEST(PlacementView, EvenLightLeavesNothing) {
  const PlacementView view = ViewOf(cv::Mat(300, 400, CV_8UC3, cv::Scalar(9, 99, 199)));
  EXPECT_LT(view.energy, 1e-6);
}

// A block of 27 samples around a lone spot of 4 x 4 pixels holds 1 / 729 of it.
TEST(PlacementView, TakesTheSurroundOff) {
  cv::Mat frame(300, 300, CV_8UC1, cv::Scalar(10));
  frame(cv::Rect(152, 152, 4, 4)).setTo(10 + 145);
  const PlacementView view = ViewOf(frame);
  const float share = 145.0f / 729.0f;
  EXPECT_NEAR(view.samples.at<float>(38, 38), 145.0f - share, 1e-3);
  EXPECT_NEAR(view.samples.at<float>(38, 51), -share, 1e-3);
  EXPECT_NEAR(view.samples.at<float>(38, 52), 0.0f, 1e-3);
}

TEST(PlacementView, TooSmallIsEmpty) {
  EXPECT_TRUE(ViewOf(cv::Mat(63, 400, CV_8UC1, cv::Scalar(1))).Empty());
  EXPECT_FALSE(ViewOf(cv::Mat(64, 400, CV_8UC1, cv::Scalar(1))).Empty());
}

#include "host/verdict/doubt/placement_doubt.h"

#include <gtest/gtest.h>

#include "doubt_pictures.h"

using jqhost::DoubtReason;
using jqhost::JudgePlacement;
using jqhost::PlacementDoubt;
using jqhost::PlacementView;

namespace {

const cv::Size kFrame(400, 300);

PlacementDoubt Judge(const cv::Mat& scene, cv::Point truth, cv::Point placed) {
  return JudgePlacement(ViewOf(scene(cv::Rect({300, 300}, kFrame))),
                        ViewOf(scene(cv::Rect(cv::Point(300, 300) + truth, kFrame))), placed);
}

cv::Mat Noisy(const cv::Mat& frame, double deviation, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat noise(frame.size(), CV_32FC1), sum;
  random.fill(noise, cv::RNG::NORMAL, 0.0, deviation);
  frame.convertTo(sum, CV_32F);
  sum += noise;
  sum.convertTo(sum, CV_8U);
  return sum;
}

}  // namespace

TEST(PlacementDoubt, TrustsTheTruePlaceOfATexture) {
  const cv::Mat scene = RandomScene({1000, 900}, 7);
  for (const cv::Point truth :
       {cv::Point(120, 10), cv::Point(-280, 0), cv::Point(33, 209), cv::Point(-5, -151)}) {
    const PlacementDoubt doubt = Judge(scene, truth, truth);
    EXPECT_FALSE(doubt.doubtful) << truth;
    EXPECT_EQ(doubt.reason, DoubtReason::kNone) << truth;
    EXPECT_GT(doubt.confidence, 0.9) << truth;
    EXPECT_GT(doubt.agreement, 0.6) << truth;
  }
}

TEST(PlacementDoubt, AWrongPlaceIsContradictedByTheTrueOne) {
  const cv::Mat scene = RandomScene({1000, 900}, 7);
  for (const cv::Point wrong : {cv::Point(132, 10), cv::Point(120, -2), cv::Point(-200, 40)}) {
    const PlacementDoubt doubt = Judge(scene, {120, 10}, wrong);
    EXPECT_TRUE(doubt.doubtful) << wrong;
    EXPECT_EQ(doubt.reason, DoubtReason::kContradicted) << wrong;
    // To half a sample.
    EXPECT_NEAR(doubt.rivalShift.x, 120, 2) << wrong;
    EXPECT_NEAR(doubt.rivalShift.y, 10, 2) << wrong;
    EXPECT_LT(doubt.confidence, 0.1) << wrong;
  }
}

// Half a sample of the views is 2 pixels of the frame; the peaks are refined.
TEST(PlacementDoubt, TellsThePeriodOfARaster) {
  for (const int period : {24, 37, 60}) {
    const cv::Mat scene = Raster({1000, 900}, period);
    const PlacementDoubt doubt = Judge(scene, {160, 0}, {160, 0});
    EXPECT_TRUE(doubt.doubtful) << period;
    EXPECT_EQ(doubt.reason, DoubtReason::kRepeats) << period;
    EXPECT_NEAR(cv::norm(doubt.period), period, 1.0) << doubt.period;
    EXPECT_LT(doubt.confidence, 0.5);
  }
}

TEST(PlacementDoubt, APlaceOnePeriodOffIsDoubtful) {
  const cv::Mat scene = Raster({1000, 900}, 37);
  const PlacementDoubt doubt = Judge(scene, {160, 0}, {160 - 37, 0});
  EXPECT_EQ(doubt.reason, DoubtReason::kRepeats);
  EXPECT_NEAR(cv::norm(doubt.period), 37, 1.0);
}

// Along even bars a frame can slide: it repeats, but has no period in that direction;
// across them it has. The nearest peak after a dip is told; of sharp bars it is a multiple of
// the true period where that falls between two samples (42 pixels, 10.5 samples).
TEST(PlacementDoubt, TellsThePeriodAcrossBars) {
  for (const auto& [bars, told] : {std::pair(44, 44), std::pair(42, 84)}) {
    cv::Mat scene(900, 1000, CV_8UC1, cv::Scalar(50));
    for (int x = 0; x + 18 <= scene.cols; x += bars) scene(cv::Rect(x, 0, 18, 900)).setTo(200);
    const PlacementDoubt doubt = Judge(Noisy(scene, 4, 1), {4 * bars, 0}, {4 * bars, 0});
    EXPECT_EQ(doubt.reason, DoubtReason::kRepeats) << bars;
    EXPECT_NEAR(std::abs(doubt.period.x), told, 1.0);
  }
}

// The texture leaves no rival, so the lead is 0.4 and confidence 1. A share of 0.05 takes
// half of it: (0.2 - 0.08) / (0.4 - 0.08) of the way from 0.5 to 1. At 0.019 the lead is
// 0.076, below 0.08.
TEST(PlacementDoubt, FewAgreeingMatchesTakeTrust) {
  const cv::Mat scene = RandomScene({1000, 900}, 7);
  const PlacementView before = ViewOf(scene(cv::Rect({300, 300}, kFrame)));
  const PlacementView current = ViewOf(scene(cv::Rect({420, 310}, kFrame)));
  const auto judge = [&](double share) {
    return JudgePlacement(before, current, {120, 10}, share);
  };
  ASSERT_EQ(judge(1.0).rival, 0.0);
  EXPECT_EQ(judge(1.0).confidence, 1.0);
  EXPECT_EQ(judge(0.1).confidence, 1.0);
  EXPECT_NEAR(judge(0.05).confidence, 0.6875, 1e-9);
  EXPECT_FALSE(judge(0.0201).doubtful);
  EXPECT_TRUE(judge(0.019).doubtful);
  EXPECT_EQ(judge(0.019).reason, DoubtReason::kUnsupported);
  EXPECT_EQ(judge(0.0).confidence, 0.0);
  // A contradicted place stays one.
  EXPECT_EQ(JudgePlacement(before, current, {132, 10}, 0.0).reason, DoubtReason::kContradicted);
}

TEST(PlacementDoubt, FlatFramesSupportNoPlace) {
  const PlacementView flat = ViewOf(cv::Mat(kFrame, CV_8UC1, cv::Scalar(90)));
  const PlacementDoubt doubt = JudgePlacement(flat, flat, {120, 0});
  EXPECT_TRUE(doubt.doubtful);
  EXPECT_EQ(doubt.reason, DoubtReason::kUnsupported);
  EXPECT_EQ(doubt.confidence, 0.0);
}

TEST(PlacementDoubt, NoiseAloneSupportsNoPlace) {
  const cv::Mat grey(kFrame, CV_8UC1, cv::Scalar(90));
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    const PlacementDoubt doubt =
        JudgePlacement(ViewOf(Noisy(grey, 8, seed)), ViewOf(Noisy(grey, 8, seed + 100)), {120, 0});
    EXPECT_EQ(doubt.reason, DoubtReason::kUnsupported) << "seed " << seed;
  }
}

// Faint texture under strong noise: little correlation, and yet the only place.
TEST(PlacementDoubt, TrustsALowCorrelationThatStandsAlone) {
  cv::Mat scene;
  RandomScene({1000, 900}, 9).convertTo(scene, CV_8U, 0.08, 40);
  const cv::Mat before = Noisy(scene(cv::Rect(300, 300, 400, 300)), 8, 1);
  const cv::Mat current = Noisy(scene(cv::Rect(420, 310, 400, 300)), 8, 2);
  const PlacementDoubt doubt = JudgePlacement(ViewOf(before), ViewOf(current), {120, 10});
  EXPECT_LT(doubt.agreement, 0.3);
  EXPECT_FALSE(doubt.doubtful);
}

TEST(PlacementDoubt, LightAndShadingDoNotMatter) {
  const cv::Mat scene = RandomScene({1000, 900}, 11);
  cv::Mat before = scene(cv::Rect(300, 300, 400, 300)).clone();
  cv::Mat current = scene(cv::Rect(420, 310, 400, 300)).clone();
  for (int r = 0; r < before.rows; ++r) {
    for (int c = 0; c < before.cols; ++c) {
      const double u = (2.0 * c - 400) / 500, v = (2.0 * r - 300) / 500;
      const double gain = 1 - 0.4 * (u * u + v * v);
      before.at<uchar>(r, c) = cv::saturate_cast<uchar>(before.at<uchar>(r, c) * gain);
      current.at<uchar>(r, c) = cv::saturate_cast<uchar>(current.at<uchar>(r, c) * gain * 0.7);
    }
  }
  const PlacementView a = ViewOf(before), b = ViewOf(current);
  EXPECT_FALSE(JudgePlacement(a, b, {120, 10}).doubtful);
  // The same shading lies in the same place of both frames.
  EXPECT_EQ(JudgePlacement(a, b, {60, 0}).reason, DoubtReason::kContradicted);
}

TEST(PlacementDoubt, WhatCannotBeComparedIsUnsupported) {
  const PlacementView view = ViewOf(RandomScene(kFrame, 1));
  const PlacementView other = ViewOf(RandomScene({300, 400}, 1));
  const PlacementView none = ViewOf(RandomScene({30, 400}, 1));
  for (const PlacementDoubt& doubt :
       {JudgePlacement(view, other, {120, 0}), JudgePlacement(none, none, {120, 0}),
        JudgePlacement(view, view, {390, 290}), JudgePlacement(view, view, {100000, -100000})}) {
    EXPECT_EQ(doubt.reason, DoubtReason::kUnsupported);
    EXPECT_EQ(doubt.confidence, 0.0);
    EXPECT_TRUE(doubt.doubtful);
  }
}

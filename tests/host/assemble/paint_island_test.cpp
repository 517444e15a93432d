// The order of painting, and that the engine's fusion is what paints.
#include "host/assemble/paint_island.h"

#include <gtest/gtest.h>

#include "jqstitch/scene_frames.h"
#include "jqstitchingalgorithm.h"

namespace jqhost_test {
namespace {

using jqhost::PaintingOrder;
using jqhost::PaintIsland;
using Corners = std::vector<cv::Point>;

TEST(PaintingOrderTest, BreadthFirstFromTheTopByRowAndColumn) {
  //   1 . 0      frame 1 is the topmost; it touches 0 and 4, these touch 2 and 3
  //   4 . 3
  //   . 2 .
  const Corners corners = {{8, 1}, {0, 0}, {4, 16}, {8, 9}, {0, 8}};
  EXPECT_EQ(PaintingOrder(corners, {10, 10}), (std::vector<std::size_t>{1, 0, 4, 3, 2}));
}

TEST(PaintingOrderTest, WhatTouchesNothingComesLast) {
  EXPECT_EQ(PaintingOrder({{50, 0}, {0, 5}, {55, 5}}, {10, 10}),
            (std::vector<std::size_t>{0, 2, 1}));
  EXPECT_TRUE(PaintingOrder({}, {10, 10}).empty());
}

cv::Mat Scene() {
  static const cv::Mat scene = jqstitch_test::MakeScene({400, 300});
  return scene;
}

TEST(PaintIslandTest, FramesOfOneSceneMakeThatScene) {
  const Corners corners = {{0, 0}, {100, 10}, {40, 90}};
  const auto read = [&corners](std::size_t frame) {
    return Scene()(cv::Rect(corners[frame], cv::Size(160, 120))).clone();
  };
  const cv::Mat picture =
      PaintIsland(corners, {160, 120}, 1, read, [](std::size_t) { return true; });
  ASSERT_EQ(picture.size(), cv::Size(260, 210));
  for (const cv::Point corner : corners) {
    const cv::Rect place(corner, cv::Size(160, 120));
    cv::Mat off;
    cv::absdiff(picture(place), Scene()(place), off);
    double most = 0;
    cv::minMaxLoc(off.reshape(1), nullptr, &most);
    EXPECT_LE(most, 1) << "the fusion truncates";
  }
  EXPECT_EQ(picture.at<cv::Vec3b>(0, 259), cv::Vec3b()) << "no frame lies there";
}

TEST(PaintIslandTest, TheSeamIsTheEnginesFusion) {
  // The second frame is 60 darker and overlaps the first by half.
  const cv::Mat bright = Scene()({0, 0, 100, 80}).clone() | cv::Scalar::all(64);
  const cv::Mat dark = Scene()({50, 0, 100, 80}) * 0.5 + cv::Scalar::all(1);
  const cv::Mat picture = PaintIsland(
      {{0, 0}, {50, 0}}, {100, 80}, 1,
      [&](std::size_t i) { return (i == 0 ? bright : dark).clone(); },
      [](std::size_t) { return true; });
  cv::Mat block = cv::Mat::zeros(80, 100, CV_8UC3);
  bright.colRange(50, 100).copyTo(block.colRange(0, 50));
  cv::Mat fused;
  JQStitchingAlgorithm().TwoImageFusion(block, dark.clone(), fused);
  EXPECT_EQ(cv::norm(picture.colRange(50, 150), fused, cv::NORM_INF), 0);
}

TEST(PaintIslandTest, AtLevelTwoTheEngineShrinksTheFrames) {
  const cv::Mat frame = Scene()({0, 0, 160, 120}).clone();
  const cv::Mat picture = PaintIsland(
      {{0, 0}}, {80, 60}, 2, [&](std::size_t) { return frame.clone(); },
      [](std::size_t) { return true; });
  EXPECT_EQ(picture.size(), cv::Size(80, 60));
}

TEST(PaintIslandTest, AFrameThatCannotBeReadAndAnEarlyEndLeaveTheRest) {
  const Corners corners = {{0, 0}, {0, 60}, {0, 120}};
  const auto read = [](std::size_t frame) {
    return frame == 1 ? cv::Mat() : cv::Mat(100, 100, CV_8UC3, cv::Scalar::all(200));
  };
  const cv::Mat gap = PaintIsland(corners, {100, 100}, 1, read, [](std::size_t) { return true; });
  EXPECT_EQ(gap.at<cv::Vec3b>(110, 50), cv::Vec3b());
  EXPECT_EQ(gap.at<cv::Vec3b>(150, 50), cv::Vec3b(200, 200, 200));
  const cv::Mat early =
      PaintIsland(corners, {100, 100}, 1, read, [](std::size_t done) { return done < 2; });
  EXPECT_EQ(early.at<cv::Vec3b>(50, 50), cv::Vec3b(200, 200, 200));
  EXPECT_EQ(early.at<cv::Vec3b>(150, 50), cv::Vec3b());
}

}  // namespace
}  // namespace jqhost_test

// What a host can write into the canvas members and hand over: no frame, and positions,
// offsets and sizes at the limits of their type. Sums wrap there.

#include <gtest/gtest.h>

#include <climits>

#include "reference/stitcher.h"
#include "support/compare.h"
#include "support/outcome.h"
#include "support/property_test.h"
#include "support/random_source.h"
#include "support/stitcher_access.h"

namespace {

bool SameBox(const JQStitchingRect& a, const JQStitchingRect& b) {
  return a.x1 == b.x1 && a.y1 == b.y1 && a.x2 == b.x2 && a.y2 == b.y2;
}

}  // namespace

TEST(CanvasLimits, WithoutAFrameNothingChanges) {
  JQImageStitching stitcher;
  stitcher.m_contentRect = {1, 2, 3, 4};
  stitcher.initResultMat(nullptr);
  EXPECT_TRUE(stitcher.m_resultMat.empty());
  EXPECT_EQ(stitcher.m_canvasRows, 10000);
  cv::Mat frame(4, 6, CV_8UC3, cv::Scalar::all(9));
  stitcher.initResultMat(&frame);
  const cv::Mat before = stitcher.m_resultMat.clone();
  const JQStitchingRect content = stitcher.m_contentRect;
  stitcher.m_framePos = cv::Point(-50, -50);
  stitcher.extendResultMat(nullptr);
  stitcher.findCutPoint(nullptr);
  EXPECT_TRUE(SameMatrix(stitcher.m_resultMat, before));
  EXPECT_EQ(stitcher.m_framePos, cv::Point(-50, -50));
  EXPECT_TRUE(SameBox(stitcher.m_contentRect, content));
  EXPECT_TRUE(SameBox(stitcher.m_cutRect, {0, 0, 0, 0}));
}

// INT_MAX + 6 columns wraps far below the box, so that the frame does not stick out.
TEST(CanvasLimits, TheEndOfAFrameWraps) {
  JQImageStitching stitcher;
  cv::Mat frame(4, 6, CV_8UC3);
  stitcher.m_contentRect = {0, 0, 100, 100};
  stitcher.m_framePos = cv::Point(INT_MAX, INT_MAX - 4);
  stitcher.findCutPoint(&frame);
  EXPECT_TRUE(SameBox(stitcher.m_contentRect, {0, 0, 100, INT_MAX}));
}

// INT_MAX + 1 wraps to the lowest number, which counts as left of and above the canvas.
TEST(CanvasLimits, PositionPlusOffsetWraps) {
  JQImageStitching stitcher;
  cv::Mat frame(4, 6, CV_8UC3, cv::Scalar::all(9));
  stitcher.initResultMat(&frame);
  stitcher.m_framePos = cv::Point(INT_MAX, INT_MAX);
  stitcher.m_frameOffset = cv::Point(1, 1);
  stitcher.m_contentRect = {INT_MAX, INT_MAX, 7, 7};
  stitcher.extendResultMat(&frame);
  EXPECT_EQ(stitcher.m_resultMat.size(), cv::Size(18, 12));
  EXPECT_EQ(stitcher.m_framePos, cv::Point(INT_MIN + 5, INT_MIN + 3));
  EXPECT_TRUE(SameBox(stitcher.m_contentRect, {INT_MIN + 5, INT_MIN + 3, 13, 11}));
}

TEST(CanvasLimits, AtTheLimitsIsTheTwins) {
  const std::uint64_t seed = TestSeed();
  std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
  RandomSource random(seed);
  const auto number = [&] {
    const int limits[] = {INT_MIN, INT_MIN + 1, INT_MAX, INT_MAX - 1, 0, -1, 1, INT_MAX / 2};
    return random.OneIn(2) ? limits[random.Int(0, 7)] : random.Int(-30, 30);
  };
  for (int k = 0; k < 2000 && !::testing::Test::HasFailure(); ++k) {
    JQImageStitching library;
    reference::Stitcher twin;
    const cv::Size size{random.Int(1, 8), random.Int(1, 8)};
    cv::Mat frame(size, CV_8UC3, cv::Scalar::all(7));
    library.initResultMat(&frame);
    twin.initResultMat(&frame);
    library.m_framePos = twin.m_framePos = cv::Point{number(), number()};
    library.m_frameOffset = twin.m_frameOffset = cv::Point{number(), number()};
    library.m_contentRect = {number(), number(), number(), number()};
    const JQStitchingRect& c = library.m_contentRect;
    twin.m_contentRect = {c.x1, c.y1, c.x2, c.y2};
    library.m_canvasRows = twin.m_canvasRows = random.OneIn(3) ? number() : twin.m_canvasRows;
    library.extendResultMat(&frame);
    twin.extendResultMat(&frame);
    library.findCutPoint(&frame);
    twin.findCutPoint(&frame);
    EXPECT_TRUE(SameMatrix(library.m_resultMat, twin.m_resultMat)) << "round " << k;
    EXPECT_EQ(library.m_framePos, twin.m_framePos);
    const reference::Rect4& t = twin.m_cutRect;
    EXPECT_TRUE(SameBox(library.m_cutRect, {t.x1, t.y1, t.x2, t.y2}));
  }
}

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "overlap/offset_call.h"
#include "support/pictures.h"

namespace {

// Squares of 40 pixels, 20 and 235 grey levels: shifted by one square, the
// pattern is its own negative.
cv::Mat Board(int phase) {
  cv::Mat picture(200, 240, CV_8UC3);
  for (int r = 0; r < picture.rows; ++r) {
    for (int c = 0; c < picture.cols; ++c) {
      const int value = (r / 40 + c / 40 + phase) % 2 == 0 ? 20 : 235;
      picture.at<cv::Vec3b>(r, c) = cv::Vec3b::all(static_cast<unsigned char>(value));
    }
  }
  return picture;
}

template <class Engine>
class OffsetVerdict : public OffsetTest<Engine> {
 protected:
  static cv::Mat Scene(int type, int seed = 32) {
    RandomSource random(seed);
    return pictures::Texture(random, 240, 300, type);
  }
  int MotionFlag(int previousGrey, int currentGrey) {
    const cv::Mat previous = pictures::Flat(50, 60, CV_8UC3, previousGrey);
    const cv::Mat current = pictures::Flat(50, 60, CV_8UC3, currentGrey);
    this->Call(1, previous, previous, current);
    return this->flags.overlapFlag;
  }
};
TYPED_TEST_SUITE(OffsetVerdict, Engines, EngineNames);

TYPED_TEST(OffsetVerdict, MotionBelowThePresetPasses) {
  this->engine.SetParameter(1, 8, 1, 1);
  EXPECT_EQ(this->MotionFlag(100, 104), 1);
  EXPECT_EQ(this->engine.m_nFlagThreshold, 5);
  EXPECT_EQ(this->MotionFlag(100, 105), 0);
  this->engine.m_nFlagPreset = 6;
  EXPECT_EQ(this->MotionFlag(100, 105), 1);
  EXPECT_EQ(this->engine.m_nFlagThreshold, 6);
}

TYPED_TEST(OffsetVerdict, NeutralMotionThresholdPassesAllButTheNegative) {
  this->engine.SetParameter(1, 8, -3, 0);
  EXPECT_EQ(this->MotionFlag(100, 100), 1);
  EXPECT_EQ(this->engine.m_nFlagThreshold, 255);
  EXPECT_EQ(this->MotionFlag(0, 254), 1);
  EXPECT_EQ(this->MotionFlag(0, 255), 0);
}

// 9 million pixels times 255 do not fit 32 bits.
TYPED_TEST(OffsetVerdict, MotionOfLargeColourFramesDoesNotWrap) {
  this->engine.SetParameter(1, 8, 1, 0);
  const cv::Mat black = pictures::Flat(3000, 3000, CV_8UC3, 0);
  const cv::Mat white = pictures::Flat(3000, 3000, CV_8UC3, 255);
  this->Call(1, pictures::Flat(100, 100, CV_8UC3, 9), black, white);
  EXPECT_EQ(this->flags.overlapFlag, 0);
}

TYPED_TEST(OffsetVerdict, MotionModeLeavesTheOverlapThresholds) {
  this->engine.SetParameter(1, 8, 1, 1);
  this->engine.m_fBrightThreshold = -9.0f;
  this->engine.m_fDefinitionThreshold = -10.0f;
  this->MotionFlag(1, 1);
  EXPECT_EQ(this->engine.m_fBrightThreshold, -9.0f);
  EXPECT_EQ(this->engine.m_fDefinitionThreshold, -10.0f);
}

TYPED_TEST(OffsetVerdict, OverlapThresholdsAreArmedAnewByEveryCall) {
  const cv::Mat scene = this->Scene(CV_8UC3);
  this->engine.SetParameter(1, 8, 0, 1);
  this->engine.m_nFlagThreshold = -8;
  this->Call(0, scene, scene, scene);
  EXPECT_EQ(this->engine.m_fBrightThreshold, 40.0f);
  EXPECT_EQ(this->engine.m_fDefinitionThreshold, 15.0f);
  this->engine.m_nUsePresets = 0;
  this->Call(1, scene, scene, scene);
  EXPECT_EQ(this->engine.m_fBrightThreshold, 128.0f);
  EXPECT_EQ(this->engine.m_fDefinitionThreshold, 128.0f);
  this->engine.m_nUsePresets = 9;
  this->engine.m_fBrightPreset = 0.0f;
  this->engine.m_fDefinitionPreset = 3.5f;
  this->Call(1, scene, scene, scene);
  EXPECT_EQ(this->engine.m_fBrightThreshold, 0.0f);
  EXPECT_EQ(this->engine.m_fDefinitionThreshold, 3.5f);
  EXPECT_EQ(this->flags.overlapFlag, 0);  // 0 is not below 0
  EXPECT_EQ(this->engine.m_nFlagThreshold, -8);
}

TYPED_TEST(OffsetVerdict, AfterAnAcceptedFrameTheTestLooksWhereTheLastOneLies) {
  this->Call(0, Board(0), Board(0), Board(0));
  EXPECT_EQ(this->flags.overlapFlag, 1);
  this->flags.offsetX = 0;
  this->flags.offsetY = 0;
  this->Call(1, Board(0), Board(0), Board(0));
  EXPECT_EQ(this->flags.overlapFlag, 1);
  this->flags.offsetX = 0;
  this->flags.offsetY = 0;
  this->Call(1, Board(0), Board(0), Board(1));
  EXPECT_EQ(this->flags.overlapFlag, 0);
}

// The board moved by one square fits at an offset of 40 and not at 0; which one
// is tested hangs on the record alone, and the record is not reset for a new run.
TYPED_TEST(OffsetVerdict, TestUsesTheOffsetOfTheCallBefore) {
  const struct {
    int x;
    int y;
    int flag;
  } rows[] = {{40, 0, 1}, {0, 0, 0}, {0, 40, 1}, {-40, 0, 1}, {0, -40, 1}, {40, -40, 0}};
  for (int frameIndex : {0, 1}) {
    for (const auto& row : rows) {
      if (frameIndex == 1) {
        this->flags.offsetX = 0;
        this->flags.offsetY = 0;
        this->Call(0, Board(0), Board(0), Board(0));
      }
      this->flags.offsetX = row.x;
      this->flags.offsetY = row.y;
      this->Call(frameIndex, Board(0), Board(0), Board(1));
      EXPECT_EQ(this->flags.overlapFlag, row.flag) << row.x << ", " << row.y;
    }
  }
}

TYPED_TEST(OffsetVerdict, NewFrameIsRegisteredAgainstTheReference) {
  const cv::Mat scene = this->Scene(CV_8UC3);
  const cv::Mat ref = scene(cv::Rect(0, 0, 240, 200));
  const cv::Mat cur = scene(cv::Rect(38, 22, 240, 200));
  for (int mode : {0, 1}) {
    this->flags = stitchflags();
    this->engine.SetParameter(1, 8, mode, 0);
    this->Call(0, ref, cur, cur);
    EXPECT_EQ(this->flags.offsetX, 38);
    EXPECT_EQ(this->flags.offsetY, 22);
    EXPECT_GE(this->flags.matchCount, 11);
  }
}

TYPED_TEST(OffsetVerdict, WithoutCornersTheOldResultStays) {
  const cv::Mat flat = pictures::Flat(200, 240, CV_8UC3, 80);
  this->flags.offsetX = 7;
  this->flags.offsetY = -8;
  this->flags.matchCount = 99;
  this->flags.overlapFlag = 55;
  this->Call(0, flat, flat, flat);
  EXPECT_EQ(this->flags.offsetX, 7);
  EXPECT_EQ(this->flags.offsetY, -8);
  EXPECT_EQ(this->flags.matchCount, 99);
  EXPECT_EQ(this->flags.overlapFlag, 0);  // a flat picture has no definition
}

// At level 7 a budget of -7 asks for one corner, which has no runner-up.
TYPED_TEST(OffsetVerdict, CornersWithoutAMatchClearTheCount) {
  const cv::Mat scene = this->Scene(CV_8UC3);
  cv::Mat big;
  cv::resize(scene, big, scene.size() * 7, 0, 0, cv::INTER_NEAREST);
  this->engine.SetParameter(7, -7, 1, 1);
  this->flags.matchCount = 99;
  this->flags.offsetX = 3;
  this->Call(1, big, big, big);
  EXPECT_EQ(this->flags.matchCount, 0);
  EXPECT_EQ(this->flags.offsetX, 0);
}

TYPED_TEST(OffsetVerdict, ColourFramesKeepTheirPixels) {
  const cv::Mat scene = this->Scene(CV_8UC3);
  const cv::Mat before = scene.clone();
  for (int mode : {0, 1}) {
    for (int level : {1, 2}) {
      this->engine.SetParameter(level, 8, mode, 1);
      this->flags = stitchflags();
      this->Call(0, scene, scene, scene);
      EXPECT_TRUE(SameMatrix(scene, before));
      EXPECT_EQ(scene.size(), cv::Size(300, 240));
    }
  }
}

// Shrunken frames have pixels of their own; at level 1 the motion test blurs the
// caller's.
TYPED_TEST(OffsetVerdict, MotionTestBlursOneChannelFramesAtLevel1Only) {
  const cv::Mat previous = this->Scene(CV_8UC1, 1);
  const cv::Mat current = this->Scene(CV_8UC1, 2);
  const cv::Mat reference = this->Scene(CV_8UC1, 3);
  const cv::Mat before[3] = {previous.clone(), current.clone(), reference.clone()};
  this->engine.SetParameter(2, 8, 1, 1);
  this->Call(1, reference, previous, current);
  EXPECT_TRUE(SameMatrix(previous, before[0]));
  EXPECT_TRUE(SameMatrix(current, before[1]));
  this->engine.SetParameter(1, 8, 1, 1);
  this->Call(1, reference, previous, current);
  EXPECT_FALSE(SameMatrix(previous, before[0]));
  EXPECT_FALSE(SameMatrix(current, before[1]));
  EXPECT_TRUE(SameMatrix(reference, before[2]));
}

}  // namespace

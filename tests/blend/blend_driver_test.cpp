#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"
#include "support/pictures.h"

namespace {

// Fixture with what the blend driver writes, with values of its own before it.
template <class Engine>
class Blend : public EngineTest<Engine> {
 protected:
  void Call(const cv::Mat& mosaic, const cv::Mat& frame, cv::Point position, cv::Point offset,
            cv::Point boxMin = cv::Point(40, 30), cv::Point boxMax = cv::Point(120, 90)) {
    stitchflags flags;
    flags.matchCount = -5;   // not read
    flags.overlapFlag = -6;  // not read
    flags.offsetX = offset.x;
    flags.offsetY = offset.y;
    flags.positionX = position.x;
    flags.positionY = position.y;
    this->engine.StitchingImage_imageblend(mosaic, frame, flags, boxMin, boxMax,
                                           cv::Point(123, 456), newMin, newMax, newPosition,
                                           newMosaic, region);
  }
  static cv::Mat Texture(int rows, int cols, int type, int seed) {
    RandomSource random(seed);
    return pictures::Texture(random, rows, cols, type);
  }
  // Twice the frame with a picture in the middle, as the offset driver makes it.
  static cv::Mat Mosaic(int rows, int cols, int type = CV_8UC3) {
    cv::Mat mosaic = cv::Mat::zeros(2 * rows, 2 * cols, type);
    Texture(rows, cols, type, 1).copyTo(mosaic(cv::Rect(cols / 2, rows / 2, cols, rows)));
    return mosaic;
  }
  void ExpectUntouched() const {
    EXPECT_EQ(newMin, cv::Point(-1, -1));
    EXPECT_EQ(newMax, cv::Point(-2, -2));
    EXPECT_EQ(newPosition, cv::Point(-3, -3));
    EXPECT_EQ(newMosaic.size(), cv::Size(1, 1));
    EXPECT_EQ(region.size(), cv::Size(2, 2));
  }
  cv::Point newMin = cv::Point(-1, -1);
  cv::Point newMax = cv::Point(-2, -2);
  cv::Point newPosition = cv::Point(-3, -3);
  cv::Mat newMosaic = cv::Mat(1, 1, CV_8UC1, cv::Scalar(7));
  cv::Mat region = cv::Mat(2, 2, CV_8UC1, cv::Scalar(8));
};
TYPED_TEST_SUITE(Blend, Engines, EngineNames);

TYPED_TEST(Blend, FrameInsideWritesIntoTheCallersMosaic) {
  const cv::Mat mosaic = this->Mosaic(60, 80);
  const cv::Mat before = mosaic.clone();
  const cv::Mat frame = this->Texture(60, 80, CV_8UC3, 2);
  cv::Mat fused = frame.clone();
  const cv::Rect covered(50, 25, 80, 60);
  this->engine.TwoImageFusion(before(covered).clone(), fused, fused);
  cv::Mat expected = before.clone();
  fused.copyTo(expected(covered));

  this->Call(mosaic, frame, cv::Point(40, 30), cv::Point(10, -5));
  EXPECT_EQ(this->newMosaic.data, mosaic.data);
  EXPECT_TRUE(SameMatrix(this->newMosaic, expected));
  EXPECT_TRUE(SameMatrix(mosaic, expected));
  EXPECT_EQ(this->newPosition, cv::Point(50, 25));
  EXPECT_EQ(this->newMin, cv::Point(40, 25));
  EXPECT_EQ(this->newMax, cv::Point(130, 90));
}

TYPED_TEST(Blend, Level1FusesIntoTheCallersFrame) {
  const cv::Mat mosaic = this->Mosaic(60, 80);
  const cv::Mat frame = this->Texture(60, 80, CV_8UC3, 2);
  const cv::Mat before = frame.clone();
  const unsigned char* pixels = frame.data;
  this->Call(mosaic, frame, cv::Point(40, 30), cv::Point(10, 5));
  EXPECT_EQ(this->region.data, pixels);
  EXPECT_FALSE(SameMatrix(frame, before));
  EXPECT_TRUE(SameMatrix(frame, this->newMosaic(cv::Rect(50, 35, 80, 60))));
}

TYPED_TEST(Blend, OtherLevelsLeaveTheCallersFrame) {
  this->engine.SetParameter(2, 8, 0, 1);
  const cv::Mat mosaic = this->Mosaic(60, 80);
  const cv::Mat frame = this->Texture(121, 160, CV_8UC3, 2);
  const cv::Mat before = frame.clone();
  this->Call(mosaic, frame, cv::Point(40, 30), cv::Point(10, 5));
  EXPECT_TRUE(SameMatrix(frame, before));
  EXPECT_EQ(this->region.size(), cv::Size(80, 60));
  EXPECT_NE(this->region.data, frame.data);
  EXPECT_TRUE(SameMatrix(this->region, mosaic(cv::Rect(50, 35, 80, 60))));
}

TYPED_TEST(Blend, TouchingTheTopGrowsOneFrameThere) {
  const cv::Mat mosaic = this->Mosaic(60, 80);
  const cv::Mat before = mosaic.clone();
  this->Call(mosaic, this->Texture(60, 80, CV_8UC3, 2), cv::Point(40, 30), cv::Point(3, -30));
  EXPECT_EQ(this->newMosaic.size(), cv::Size(160, 180));
  EXPECT_EQ(this->newPosition, cv::Point(43, 60));
  EXPECT_EQ(this->newMin, cv::Point(40, 60));
  EXPECT_EQ(this->newMax, cv::Point(123, 150));
  EXPECT_TRUE(SameMatrix(mosaic, before));
  EXPECT_TRUE(SameMatrix(this->newMosaic.rowRange(120, 180), before.rowRange(60, 120)));
  EXPECT_EQ(cv::countNonZero(this->newMosaic.rowRange(0, 60).reshape(1)), 0);
}

TYPED_TEST(Blend, TouchingTheBottomGrowsThereAndMovesNothing) {
  const cv::Mat mosaic = this->Mosaic(60, 80);
  this->Call(mosaic, this->Texture(60, 80, CV_8UC3, 2), cv::Point(40, 30), cv::Point(-2, 30));
  EXPECT_EQ(this->newMosaic.size(), cv::Size(160, 180));
  EXPECT_EQ(this->newPosition, cv::Point(38, 60));
  EXPECT_EQ(this->newMin, cv::Point(38, 30));
  EXPECT_EQ(this->newMax, cv::Point(120, 120));
}

// The box's minimum moves twice and its maximum not at all.
TYPED_TEST(Blend, OffTheTopRightCornerMovesTheBoxOneSided) {
  const cv::Mat mosaic = this->Mosaic(60, 80);
  this->Call(mosaic, this->Texture(60, 80, CV_8UC3, 2), cv::Point(40, 30), cv::Point(50, -40));
  EXPECT_EQ(this->newMosaic.size(), cv::Size(240, 180));
  EXPECT_EQ(this->newPosition, cv::Point(90, 50));
  // Moved to y 150 .. 90; the frame of 50 .. 110 starts below and does not end
  // before 90, so neither bound changes.
  EXPECT_EQ(this->newMin, cv::Point(40, 150));
  EXPECT_EQ(this->newMax, cv::Point(170, 90));
}

TYPED_TEST(Blend, Level2GrowsInStepsOfTheShrunkenFrame) {
  this->engine.SetParameter(2, 8, 0, 1);
  const cv::Mat frame = this->Texture(1080, 1920, CV_8UC3, 2);
  const cv::Mat mosaic = cv::Mat::zeros(1080, 1920, CV_8UC3);
  this->Call(mosaic, frame, cv::Point(480, 270), cv::Point(480, 0), cv::Point(480, 270),
             cv::Point(1440, 810));
  EXPECT_EQ(this->newMosaic.size(), cv::Size(1920 + 960, 1080));
  this->Call(mosaic, frame, cv::Point(480, 270), cv::Point(100, 270), cv::Point(480, 270),
             cv::Point(1440, 810));
  EXPECT_EQ(this->newMosaic.size(), cv::Size(1920, 1080 + 540));
}

// On empty mosaic the frame is passed through, and at other levels its shrunken
// version.
TYPED_TEST(Blend, FrameOnEmptyMosaicIsPassedThrough) {
  cv::Mat mosaic = cv::Mat::zeros(120, 160, CV_8UC3);
  const cv::Mat frame = this->Texture(60, 80, CV_8UC3, 2);
  const cv::Mat before = frame.clone();
  this->Call(mosaic, frame, cv::Point(40, 30), cv::Point(0, 0));
  EXPECT_TRUE(SameMatrix(mosaic(cv::Rect(40, 30, 80, 60)), before));

  this->engine.SetParameter(3, 8, 0, 1);
  const cv::Mat large = this->Texture(181, 242, CV_8UC3, 3);
  cv::Mat small;
  cv::resize(large, small, cv::Size(80, 60), 0, 0, cv::INTER_LINEAR);
  mosaic.setTo(0);
  this->Call(mosaic, large, cv::Point(40, 30), cv::Point(0, 0));
  EXPECT_TRUE(SameMatrix(mosaic(cv::Rect(40, 30, 80, 60)), small));
}

TYPED_TEST(Blend, LevelBelowOneRaisesBeforeAnythingChanges) {
  const cv::Mat mosaic = this->Mosaic(60, 80);
  const cv::Mat frame = this->Texture(60, 80, CV_8UC3, 2);
  const cv::Mat beforeMosaic = mosaic.clone();
  const cv::Mat beforeFrame = frame.clone();
  for (int level : {0, -1, -2147483647 - 1}) {
    this->engine.SetParameter(level, 8, 0, 1);
    EXPECT_EQ(Ending([&] { this->Call(mosaic, frame, cv::Point(40, 30), cv::Point(10, 5)); }),
              Outcome::kImageLibraryError);
    this->ExpectUntouched();
    EXPECT_TRUE(SameMatrix(mosaic, beforeMosaic));
    EXPECT_TRUE(SameMatrix(frame, beforeFrame));
  }
}

TYPED_TEST(Blend, FailureLeavesMosaicFrameAndOutputs) {
  const cv::Mat mosaic = this->Mosaic(60, 80);
  const cv::Mat beforeMosaic = mosaic.clone();
  const struct {
    const char* name;
    cv::Mat frame;
    cv::Point offset;
  } rows[] = {
      {"one-channel frame", this->Texture(60, 80, CV_8UC1, 2), {10, 5}},
      {"four-channel frame", this->Texture(60, 80, CV_8UC4, 2), {10, 5}},
      {"still outside after growth, top", this->Texture(60, 80, CV_8UC3, 2), {0, -91}},
      {"still outside after growth, left", this->Texture(60, 80, CV_8UC3, 2), {-121, 0}},
      {"still outside after growth, right", this->Texture(60, 80, CV_8UC3, 2), {121, 0}},
      {"still outside after growth, bottom", this->Texture(60, 80, CV_8UC3, 2), {0, 91}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const cv::Mat beforeFrame = row.frame.clone();
    EXPECT_EQ(Ending([&] { this->Call(mosaic, row.frame, cv::Point(40, 30), row.offset); }),
              Outcome::kImageLibraryError);
    this->ExpectUntouched();
    EXPECT_TRUE(SameMatrix(mosaic, beforeMosaic));
    EXPECT_TRUE(SameMatrix(row.frame, beforeFrame));
  }
}

TYPED_TEST(Blend, OneStepOfGrowthReachesJustSoFar) {
  const struct {
    cv::Point offset;
    cv::Point position;
  } rows[] = {
      {{0, -90}, {40, 0}}, {{-120, 0}, {0, 30}}, {{120, 0}, {160, 30}}, {{0, 90}, {40, 120}}};
  for (const auto& row : rows) {
    this->Call(this->Mosaic(60, 80), this->Texture(60, 80, CV_8UC3, 2), cv::Point(40, 30),
               row.offset);
    EXPECT_EQ(this->newPosition, row.position);
  }
}

}  // namespace

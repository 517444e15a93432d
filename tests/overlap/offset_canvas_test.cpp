#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "overlap/offset_call.h"
#include "support/outcome.h"
#include "support/pictures.h"

namespace {

template <class Engine>
class OffsetCanvas : public OffsetTest<Engine> {
 protected:
  static cv::Mat Scene(int rows, int cols, int type = CV_8UC3) {
    RandomSource random(31);
    return pictures::Texture(random, rows, cols, type);
  }
};
TYPED_TEST_SUITE(OffsetCanvas, Engines, EngineNames);

TYPED_TEST(OffsetCanvas, IsExactlyTwiceTheFrameAtLevel1) {
  const cv::Mat scene = this->Scene(60, 80);
  this->Call(0, scene, scene, scene);
  EXPECT_EQ(this->mosaic.size(), cv::Size(160, 120));
  EXPECT_EQ(this->flags.positionX, 40);
  EXPECT_EQ(this->flags.positionY, 30);
  EXPECT_EQ(this->minPoint, cv::Point(40, 30));
  EXPECT_EQ(this->maxPoint, cv::Point(120, 90));
  cv::Mat expected = cv::Mat::zeros(120, 160, CV_8UC3);
  scene.copyTo(expected(cv::Rect(40, 30, 80, 60)));
  EXPECT_TRUE(SameMatrix(this->mosaic, expected));
}

TYPED_TEST(OffsetCanvas, Level2ShrinksAllThreeFrames) {
  this->engine.SetParameter(2, 8, 0, 1);
  const cv::Mat scene = this->Scene(801, 1001);
  this->Call(0, scene, scene, scene);
  EXPECT_EQ(this->mosaic.size(), cv::Size(1000, 800));
  EXPECT_EQ(this->flags.positionX, 250);
  EXPECT_EQ(this->flags.positionY, 200);
  EXPECT_EQ(this->engine.m_nImageCols, 500);
  EXPECT_EQ(this->engine.m_nImageRows, 400);
  cv::Mat small;
  cv::resize(scene, small, cv::Size(500, 400), 0, 0, cv::INTER_LINEAR);
  EXPECT_TRUE(SameMatrix(this->mosaic(cv::Rect(250, 200, 500, 400)), small));
}

// Odd halves are cut off, so the frame lies one pixel further right and down.
TYPED_TEST(OffsetCanvas, OddFrameOfFiveByThree) {
  const cv::Mat frame = this->Scene(3, 5);
  this->Call(0, frame, frame, frame);
  EXPECT_EQ(this->flags.positionX, 3);
  EXPECT_EQ(this->flags.positionY, 2);
  EXPECT_EQ(this->minPoint, cv::Point(3, 2));
  EXPECT_EQ(this->maxPoint, cv::Point(8, 5));
  EXPECT_EQ(this->mosaic.size(), cv::Size(10, 6));
  cv::Mat expected = cv::Mat::zeros(6, 10, CV_8UC3);
  frame.copyTo(expected(cv::Rect(3, 2, 5, 3)));
  EXPECT_TRUE(SameMatrix(this->mosaic, expected));
}

TYPED_TEST(OffsetCanvas, FollowsTheChannelsOfTheReference) {
  const cv::Mat grey = this->Scene(60, 80, CV_8UC1);
  this->Call(0, grey, grey, grey);
  EXPECT_EQ(this->mosaic.type(), CV_8UC1);
  const cv::Mat colour = this->Scene(60, 80);
  this->Call(0, colour, colour, colour);
  EXPECT_EQ(this->mosaic.type(), CV_8UC3);
}

TYPED_TEST(OffsetCanvas, IsNewAndDoesNotShareTheReference) {
  const cv::Mat scene = this->Scene(60, 80);
  const cv::Mat before = scene.clone();
  cv::Mat old = this->mosaic;
  this->Call(0, scene, scene, scene);
  EXPECT_EQ(old.at<unsigned char>(0, 0), 9);
  this->mosaic.setTo(0);
  EXPECT_TRUE(SameMatrix(scene, before));
  // A new run of the same size does not write into the old canvas either.
  old = this->mosaic;
  this->Call(0, scene, scene, scene);
  EXPECT_EQ(cv::countNonZero(old.reshape(1)), 0);
}

TYPED_TEST(OffsetCanvas, LaterCallsLeaveMosaicBoxAndPosition) {
  for (int mode : {0, 1}) {
    this->engine.SetParameter(1, 8, mode, 1);
    const cv::Mat scene = this->Scene(140, 160);
    this->Call(0, scene, scene, scene);
    this->flags.offsetX = 0;
    this->flags.offsetY = 0;
    const cv::Mat before = this->mosaic.clone();
    const unsigned char* pixels = this->mosaic.data;
    this->engine.m_nImageCols = -5;
    this->engine.m_nImageRows = -6;
    this->Call(1, scene, scene, this->Scene(140, 160));
    this->Call(-1, scene, scene, scene);
    EXPECT_EQ(this->mosaic.data, pixels);
    EXPECT_TRUE(SameMatrix(this->mosaic, before));
    EXPECT_EQ(this->minPoint, cv::Point(80, 70));
    EXPECT_EQ(this->maxPoint, cv::Point(240, 210));
    EXPECT_EQ(this->flags.positionX, 80);
    EXPECT_EQ(this->flags.positionY, 70);
    EXPECT_EQ(this->engine.m_nImageCols, -5);
    EXPECT_EQ(this->engine.m_nImageRows, -6);
  }
}

TYPED_TEST(OffsetCanvas, LevelBelowOneRaisesBeforeAnythingChanges) {
  const cv::Mat scene = this->Scene(60, 80);
  for (int level : {0, -1, -2147483647 - 1}) {
    for (int mode : {0, 1}) {
      this->engine.SetParameter(level, 8, mode, 1);
      this->engine.m_nFlagThreshold = -8;
      this->engine.m_fBrightThreshold = -9.0f;
      this->engine.m_fDefinitionThreshold = -10.0f;
      EXPECT_EQ(Ending([&] { this->Call(0, scene, scene, scene); }), Outcome::kImageLibraryError);
      this->ExpectUntouched();
      EXPECT_EQ(this->engine.m_nImageCols, 5000);
      EXPECT_EQ(this->engine.m_nImageRows, 5000);
      EXPECT_EQ(this->engine.m_nDownScale, 1);
      EXPECT_EQ(this->engine.m_nFlagThreshold, -8);
      EXPECT_EQ(this->engine.m_fBrightThreshold, -9.0f);
      EXPECT_EQ(this->engine.m_fDefinitionThreshold, -10.0f);
    }
  }
}

// A failure after the canvas was made: the second picture cannot be registered,
// the shift lies outside, the frames are empty or vanish when shrunken.
TYPED_TEST(OffsetCanvas, LaterFailureLeavesTheOutputs) {
  const cv::Mat scene = this->Scene(60, 80);
  const cv::Mat grey = this->Scene(60, 80, CV_8UC1);
  EXPECT_EQ(Ending([&] { this->Call(0, scene, scene, grey); }), Outcome::kImageLibraryError);
  this->ExpectUntouched();
  EXPECT_EQ(Ending([&] { this->Call(0, cv::Mat(), cv::Mat(), cv::Mat()); }),
            Outcome::kImageLibraryError);
  this->ExpectUntouched();
  this->engine.SetParameter(1, 8, 1, 1);
  EXPECT_EQ(Ending([&] { this->Call(0, scene, cv::Mat(), scene); }), Outcome::kImageLibraryError);
  this->ExpectUntouched();
  this->engine.SetParameter(100, 8, 0, 1);
  EXPECT_EQ(Ending([&] { this->Call(0, scene, scene, scene); }), Outcome::kImageLibraryError);
  this->ExpectUntouched();
  this->engine.SetParameter(1, 8, 0, 1);
  this->flags.offsetX = 81;
  EXPECT_EQ(Ending([&] { this->Call(0, scene, scene, scene); }), Outcome::kImageLibraryError);
  EXPECT_EQ(this->flags.offsetX, 81);
  this->flags.offsetX = 0;
  this->ExpectUntouched();
}

}  // namespace

#include <gtest/gtest.h>

#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"
#include "support/pictures.h"

namespace {

template <class Engine>
class Fusion : public EngineTest<Engine> {
 protected:
  cv::Mat Fused(const cv::Mat& oldBlock, const cv::Mat& newFrame) {
    cv::Mat fused;
    this->engine.TwoImageFusion(oldBlock, newFrame.clone(), fused);
    return fused;
  }
  static cv::Mat Texture(int type, int seed) {
    RandomSource random(seed);
    return pictures::Texture(random, 30, 40, type);
  }
};
TYPED_TEST_SUITE(Fusion, Engines, EngineNames);

TYPED_TEST(Fusion, BlackOldBlockGivesTheFrame) {
  const cv::Mat frame = this->Texture(CV_8UC3, 1);
  EXPECT_TRUE(SameMatrix(this->Fused(pictures::Flat(30, 40, CV_8UC3, 0), frame), frame));
}

TYPED_TEST(Fusion, BlackFrameGivesTheOldBlock) {
  const cv::Mat oldBlock = this->Texture(CV_8UC3, 1);
  EXPECT_TRUE(SameMatrix(this->Fused(oldBlock, pictures::Flat(30, 40, CV_8UC3, 0)), oldBlock));
}

TYPED_TEST(Fusion, FramesOutermostPixelsGiveTheOldBlock) {
  const cv::Mat oldBlock = this->Texture(CV_8UC3, 1);
  const cv::Mat fused = this->Fused(oldBlock, this->Texture(CV_8UC3, 2));
  for (int r : {0, 29}) EXPECT_TRUE(SameMatrix(fused.row(r), oldBlock.row(r)));
  for (int c : {0, 39}) EXPECT_TRUE(SameMatrix(fused.col(c), oldBlock.col(c)));
}

TYPED_TEST(Fusion, BlackOnBlackIsBlack) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat black = pictures::Flat(30, 40, type, 0);
    EXPECT_TRUE(SameMatrix(this->Fused(black, black), black));
  }
}

// A weight of 170 at 5 pixels from the left border, as in the weights' own test.
TYPED_TEST(Fusion, ColourIsDividedBy255AndTruncated) {
  cv::Mat oldBlock(61, 80, CV_8UC3, cv::Scalar(50, 200, 3));
  oldBlock.colRange(15, 80).setTo(0);
  const cv::Mat frame(61, 80, CV_8UC3, cv::Scalar(101, 7, 250));
  const cv::Vec3b pixel = this->Fused(oldBlock, frame).template at<cv::Vec3b>(30, 5);
  EXPECT_EQ(int{pixel[0]}, (85 * 101 + 170 * 50) / 255);  // 67
  EXPECT_EQ(int{pixel[1]}, (85 * 7 + 170 * 200) / 255);   // 135.67
  EXPECT_EQ(int{pixel[2]}, (85 * 250 + 170 * 3) / 255);   // 85.33
  EXPECT_EQ(int{pixel[1]}, 135);
}

// One channel is divided by 256, so that even a pixel taken whole loses a little.
TYPED_TEST(Fusion, GreyIsDividedBy256) {
  const cv::Mat black = pictures::Flat(30, 40, CV_8UC1, 0);
  for (int value : {1, 2, 100, 200, 255}) {
    const cv::Mat flat = pictures::Flat(30, 40, CV_8UC1, value);
    const int expected = 255 * value / 256;
    EXPECT_EQ(cv::countNonZero(this->Fused(black, flat) == expected), 1200) << value;
    EXPECT_EQ(cv::countNonZero(this->Fused(flat, black) == expected), 1200) << value;
  }
}

TYPED_TEST(Fusion, GreyMixesByTheWeight) {
  cv::Mat oldBlock = pictures::Flat(61, 80, CV_8UC1, 200);
  oldBlock.colRange(15, 80).setTo(0);
  const cv::Mat fused = this->Fused(oldBlock, pictures::Flat(61, 80, CV_8UC1, 7));
  EXPECT_EQ(int{fused.ptr(30)[5]}, (85 * 7 + 170 * 200) / 256);
}

TYPED_TEST(Fusion, ResultIsWrittenIntoTheFrameAndShared) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat oldBlock = this->Texture(type, 1);
    const cv::Mat beforeOld = oldBlock.clone();
    const cv::Mat frame = this->Texture(type, 2);
    const cv::Mat beforeFrame = frame.clone();
    cv::Mat fused;
    this->engine.TwoImageFusion(oldBlock, frame, fused);
    EXPECT_EQ(fused.data, frame.data);
    EXPECT_FALSE(SameMatrix(frame, beforeFrame));
    EXPECT_TRUE(SameMatrix(oldBlock, beforeOld));
  }
}

// As the blend driver calls it.
TYPED_TEST(Fusion, OldBlockMayAlsoBeTheResult) {
  cv::Mat oldBlock = this->Texture(CV_8UC3, 1);
  const cv::Mat frame = this->Texture(CV_8UC3, 2);
  const cv::Mat expected = this->Fused(oldBlock, frame);
  this->engine.TwoImageFusion(oldBlock, frame, oldBlock);
  EXPECT_TRUE(SameMatrix(oldBlock, expected));
  EXPECT_EQ(oldBlock.data, frame.data);
}

TYPED_TEST(Fusion, PicturesThatDoNotFitRaiseBeforeAnyWrite) {
  const cv::Mat good = this->Texture(CV_8UC3, 1);
  const cv::Mat others[] = {
      good.rowRange(0, 29).clone(), good.colRange(0, 39).clone(), this->Texture(CV_8UC1, 1),
      cv::Mat(30, 40, CV_16UC3, cv::Scalar::all(1)), this->Texture(CV_8UC4, 1)};
  for (const cv::Mat& other : others) {
    for (bool swapped : {false, true}) {
      const cv::Mat& oldBlock = swapped ? other : good;
      const cv::Mat& frame = swapped ? good : other;
      const cv::Mat before = frame.clone();
      cv::Mat fused(1, 1, CV_8UC1, cv::Scalar(7));
      EXPECT_EQ(Ending([&] { this->engine.TwoImageFusion(oldBlock, frame, fused); }),
                Outcome::kImageLibraryError);
      EXPECT_TRUE(SameMatrix(frame, before));
      EXPECT_EQ(fused.size(), cv::Size(1, 1));
    }
  }
  for (int type : {CV_8UC2, CV_8UC4, CV_16UC1, CV_32FC3}) {
    const cv::Mat both(8, 9, type, cv::Scalar::all(1));
    cv::Mat fused;
    EXPECT_EQ(Ending([&] { this->engine.TwoImageFusion(both.clone(), both, fused); }),
              Outcome::kImageLibraryError)
        << type;
  }
}

}  // namespace

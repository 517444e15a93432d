#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"
#include "support/pictures.h"

namespace {

cv::Mat Blurred(const cv::Mat& picture) {
  cv::Mat blurred = picture.clone();
  const cv::Mat kernel = cv::getGaussianKernel(5, 1.0, CV_64F);
  cv::filter2D(blurred, blurred, CV_8U, kernel, cv::Point(-1, -1), 0, 4);
  cv::filter2D(blurred, blurred, CV_8U, kernel.t(), cv::Point(-1, -1), 0, 4);
  return blurred;
}

template <class Engine>
class Motion : public EngineTest<Engine> {
 protected:
  static cv::Mat Scene(int type, int seed = 4) {
    RandomSource random(seed);
    return pictures::Texture(random, 60, 70, type);
  }
};
TYPED_TEST_SUITE(Motion, Engines, EngineNames);

TYPED_TEST(Motion, IdenticalFramesGiveZero) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat scene = this->Scene(type);
    EXPECT_EQ(this->engine.ImageMotionModel(scene, scene.clone()), 0);
  }
}

TYPED_TEST(Motion, BlackAgainstWhiteGives255) {
  const cv::Size sizes[] = {{1, 1}, {1, 9}, {9, 1}, {2, 2}, {64, 48}, {33, 17}};
  for (const cv::Size& size : sizes) {
    for (int type : {CV_8UC1, CV_8UC3}) {
      EXPECT_EQ(this->engine.ImageMotionModel(pictures::Flat(size.height, size.width, type, 0),
                                              pictures::Flat(size.height, size.width, type, 255)),
                255)
          << size;
    }
  }
}

TYPED_TEST(Motion, ColourAndGreyAreBothComparedAsGrey) {
  const cv::Mat colour = this->Scene(CV_8UC3);
  cv::Mat grey;
  cv::cvtColor(colour, grey, cv::COLOR_RGB2GRAY);
  EXPECT_EQ(this->engine.ImageMotionModel(colour, grey.clone()), 0);
  EXPECT_EQ(this->engine.ImageMotionModel(grey.clone(), colour), 0);
}

// Pure first-channel pixels weigh 0.299 in the red-green-blue order: 100 -> 30.
// In the frames' own order they would weigh 0.114.
TYPED_TEST(Motion, GreyFollowsTheRedGreenBlueCode) {
  const cv::Mat blue(20, 20, CV_8UC3, cv::Scalar(100, 0, 0));
  EXPECT_EQ(this->engine.ImageMotionModel(blue, pictures::Flat(20, 20, CV_8UC3, 0)), 30);
}

// 105 over nine tenths and 104 over the last one, against 100.
TYPED_TEST(Motion, MeanIsTruncated) {
  cv::Mat second = pictures::Flat(50, 100, CV_8UC1, 105);
  second.colRange(90, 100).setTo(104);
  EXPECT_EQ(this->engine.ImageMotionModel(pictures::Flat(50, 100, CV_8UC1, 100), second), 4);
}

TYPED_TEST(Motion, OneChannelFramesComeBackBlurred) {
  const cv::Mat a = this->Scene(CV_8UC1, 4);
  const cv::Mat b = this->Scene(CV_8UC1, 5);
  const cv::Mat blurredA = Blurred(a);
  const cv::Mat blurredB = Blurred(b);
  const unsigned char* pixels = a.data;
  this->engine.ImageMotionModel(a, b);
  EXPECT_EQ(a.data, pixels);
  EXPECT_TRUE(SameMatrix(a, blurredA));
  EXPECT_TRUE(SameMatrix(b, blurredB));
}

TYPED_TEST(Motion, ColourFramesKeepTheirPixels) {
  const cv::Mat a = this->Scene(CV_8UC3, 4);
  const cv::Mat b = this->Scene(CV_8UC3, 5);
  const cv::Mat beforeA = a.clone();
  const cv::Mat beforeB = b.clone();
  EXPECT_GT(this->engine.ImageMotionModel(a, b), 0);
  EXPECT_TRUE(SameMatrix(a, beforeA));
  EXPECT_TRUE(SameMatrix(b, beforeB));
}

// 9 million pixels times 255 do not fit 32 bits.
TYPED_TEST(Motion, SumIsWideEnoughForLargeFrames) {
  EXPECT_EQ(this->engine.ImageMotionModel(pictures::Flat(3000, 3000, CV_8UC1, 0),
                                          pictures::Flat(3000, 3000, CV_8UC1, 255)),
            255);
}

// The rows and columns of the second frame are compared. The first is blurred whole: the
// samples right of and below the compared part take part in its last two columns and rows.
TYPED_TEST(Motion, ALargerFirstFrameIsComparedInItsTopLeftPart) {
  for (const int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat wide = this->Scene(type, 4);
    const cv::Mat second = this->Scene(type, 5)(cv::Rect(0, 0, 31, 23)).clone();
    cv::Mat grey = wide, other = second;
    if (type == CV_8UC3) {
      cv::cvtColor(wide, grey, cv::COLOR_RGB2GRAY);
      cv::cvtColor(second, other, cv::COLOR_RGB2GRAY);
    }
    cv::Mat difference;
    cv::absdiff(Blurred(grey)(cv::Rect(0, 0, 31, 23)), Blurred(other), difference);
    const int expected = static_cast<int>(cv::sum(difference)[0] / (31 * 23));
    EXPECT_EQ(this->engine.ImageMotionModel(wide, second), expected);
  }
}

TYPED_TEST(Motion, TheRestOfALargerFirstFrameOnlyBleedsIn) {
  // Column 10 is the first that is not compared: of its 255, columns 9 and 8 get
  // 255 * 0.24420 = 62.27 and 255 * 0.05449 = 13.89, together 62 + 14 over 10 columns.
  for (const int type : {CV_8UC1, CV_8UC3}) {
    cv::Mat first = pictures::Flat(10, 20, type, 0);
    first.col(10).setTo(cv::Scalar::all(255));
    EXPECT_EQ(this->engine.ImageMotionModel(first, pictures::Flat(10, 10, type, 0)), 7);
  }
}

TYPED_TEST(Motion, EmptyOrSmallerFirstFramesRaiseBeforeAnyBlur) {
  const cv::Mat a = this->Scene(CV_8UC1);
  const cv::Mat before = a.clone();
  const cv::Mat others[] = {cv::Mat(), a.rowRange(0, 59).clone(), a.colRange(0, 69).clone(), a.t()};
  for (const cv::Mat& other : others) {
    EXPECT_EQ(Ending([&] { this->engine.ImageMotionModel(other, a); }),
              Outcome::kImageLibraryError);
    EXPECT_TRUE(SameMatrix(a, before));
  }
  EXPECT_EQ(Ending([&] { this->engine.ImageMotionModel(a, cv::Mat()); }),
            Outcome::kImageLibraryError);
  EXPECT_TRUE(SameMatrix(a, before));
  EXPECT_EQ(Ending([&] { this->engine.ImageMotionModel(cv::Mat(), cv::Mat()); }),
            Outcome::kImageLibraryError);
}

}  // namespace

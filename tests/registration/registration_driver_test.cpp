#include <gtest/gtest.h>

#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"
#include "support/pictures.h"

namespace {

using Points = std::vector<cv::Point>;

template <class Engine>
class Registration : public EngineTest<Engine> {
 protected:
  void Run(const cv::Mat& first, const cv::Mat& second) {
    EXPECT_EQ(this->engine.ImageMosaicFun(first, second, x, y, support), 0);
  }
  void ExpectPreset() const {
    EXPECT_EQ(x, 111);
    EXPECT_EQ(y, 222);
    EXPECT_EQ(support, 333);
  }
  static cv::Mat Scene(int type) {
    RandomSource random(99);
    return pictures::Texture(random, 340, 440, type);
  }
  int x = 111;
  int y = 222;
  int support = 333;
};
TYPED_TEST_SUITE(Registration, Engines, EngineNames);

TYPED_TEST(Registration, IdenticalPicturesDoNotMove) {
  const cv::Mat grey = this->Scene(CV_8UC1);
  this->Run(grey, grey.clone());
  EXPECT_EQ(this->x, 0);
  EXPECT_EQ(this->y, 0);

  Points corners;
  this->engine.FindHarrisCornerCoordianteFun(grey, corners);
  cv::Mat descriptors;
  this->engine.NoRotaFeatureDescriber(grey, corners, descriptors);
  Points pairs;
  this->engine.CalacDistanceIndexFun(descriptors, descriptors, pairs);
  int agreeing = 0;
  for (const cv::Point& pair : pairs) {
    const cv::Point shift = corners[pair.x] - corners[pair.y];
    agreeing += std::hypot(shift.x, shift.y) < 4.0;
  }
  EXPECT_GT(agreeing, 11);
  EXPECT_EQ(this->support, agreeing);
}

TYPED_TEST(Registration, ShiftOfTheSecondIsMeasured) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat scene = this->Scene(type);
    this->Run(scene(cv::Rect(0, 0, 400, 300)), scene(cv::Rect(10, 4, 400, 300)));
    EXPECT_EQ(this->x, 10);
    EXPECT_EQ(this->y, 4);
    EXPECT_GE(this->support, 11);
    this->Run(scene(cv::Rect(10, 4, 400, 300)), scene(cv::Rect(0, 30, 400, 300)));
    EXPECT_EQ(this->x, -10);
    EXPECT_EQ(this->y, 26);
  }
}

TYPED_TEST(Registration, FlatPictureLeavesTheOutputsAsPreset) {
  const cv::Mat flat = pictures::Flat(300, 400, CV_8UC1, 90);
  const cv::Mat scene = this->Scene(CV_8UC1);
  this->Run(flat, scene);
  this->ExpectPreset();
  this->Run(scene, flat);
  this->ExpectPreset();
  this->Run(flat, flat);
  this->ExpectPreset();
}

// A single corner in the first picture has no runner-up, so that no pair passes.
TYPED_TEST(Registration, CornersWithoutAMatchGiveZeros) {
  this->engine.SetParameter(7, -7, 0, 1);
  const cv::Mat scene = this->Scene(CV_8UC1);
  this->Run(scene, scene);
  EXPECT_EQ(this->x, 0);
  EXPECT_EQ(this->y, 0);
  EXPECT_EQ(this->support, 0);
}

TYPED_TEST(Registration, ColourIsTurnedGreyByTheRedGreenBlueCode) {
  const cv::Mat scene = this->Scene(CV_8UC3);
  const cv::Mat a = scene(cv::Rect(0, 0, 400, 300));
  const cv::Mat b = scene(cv::Rect(37, 21, 400, 300));
  int expected[2][3];
  const int codes[2] = {cv::COLOR_RGB2GRAY, cv::COLOR_BGR2GRAY};
  for (int k = 0; k < 2; ++k) {
    cv::Mat greyA;
    cv::Mat greyB;
    cv::cvtColor(a, greyA, codes[k]);
    cv::cvtColor(b, greyB, codes[k]);
    this->engine.ImageMosaicFun(greyA, greyB, expected[k][0], expected[k][1], expected[k][2]);
  }
  ASSERT_NE(expected[0][2], expected[1][2]) << "the scene does not tell the codes apart";
  this->Run(a, b);
  EXPECT_EQ(this->x, expected[0][0]);
  EXPECT_EQ(this->y, expected[0][1]);
  EXPECT_EQ(this->support, expected[0][2]);
}

TYPED_TEST(Registration, PicturesAreNotModified) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat first = this->Scene(type);
    const cv::Mat before = first.clone();
    this->Run(first, first);
    EXPECT_TRUE(SameMatrix(first, before));
  }
}

TYPED_TEST(Registration, ColourFirstWithGreySecondRaises) {
  EXPECT_EQ(Ending([&] { this->Run(this->Scene(CV_8UC3), this->Scene(CV_8UC1)); }),
            Outcome::kImageLibraryError);
  this->ExpectPreset();
}

// The first picture's channels decide for both: the second stays colour and is
// read as one byte a pixel.
TYPED_TEST(Registration, GreyFirstPassesAColourSecondUnconverted) {
  const cv::Mat first = this->Scene(CV_8UC1);
  const cv::Mat second = this->Scene(CV_8UC3);
  Points p1;
  Points p2;
  this->engine.FindHarrisCornerCoordianteFun(first, p1);
  this->engine.FindHarrisCornerCoordianteFun(second, p2);
  ASSERT_FALSE(p2.empty());
  cv::Mat d1;
  cv::Mat d2;
  this->engine.NoRotaFeatureDescriber(first, p1, d1);
  this->engine.NoRotaFeatureDescriber(second, p2, d2);
  Points pairs;
  Points m1;
  Points m2;
  Points i1;
  Points i2;
  float tx = 0;
  float ty = 0;
  this->engine.CalacDistanceIndexFun(d1, d2, pairs);
  this->engine.RoughMatchPoint(p1, p2, pairs, m1, m2);
  this->engine.RansacMatchPointArrayFun(m1, m2, i1, i2, tx, ty);
  this->Run(first, second);
  EXPECT_EQ(this->support, static_cast<int>(i1.size()));
  EXPECT_EQ(this->x, static_cast<int>(tx));
  EXPECT_EQ(this->y, static_cast<int>(ty));
}

TYPED_TEST(Registration, PictureTooNarrowToHalveRaisesAfterTheDownScaleIsSet) {
  this->engine.SetParameter(0, 8, 0, 1);
  EXPECT_EQ(this->engine.m_nDownScale, 1);
  EXPECT_EQ(Ending([&] { this->Run(this->Scene(CV_8UC1), pictures::Flat(90, 1, CV_8UC1, 4)); }),
            Outcome::kImageLibraryError);
  EXPECT_EQ(this->engine.m_nDownScale, 2);
  this->ExpectPreset();
}

TYPED_TEST(Registration, UnsupportedTypeRaisesAndLeavesTheOutputs) {
  const cv::Mat two = pictures::Flat(200, 200, CV_8UC2, 5);
  EXPECT_EQ(Ending([&] { this->Run(two, two); }), Outcome::kImageLibraryError);
  EXPECT_EQ(Ending([&] { this->Run(cv::Mat(), cv::Mat()); }), Outcome::kImageLibraryError);
  this->ExpectPreset();
}

}  // namespace

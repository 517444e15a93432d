#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <opencv2/imgproc.hpp>

#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"
#include "support/pictures.h"

namespace {

// Halving gives back the picture exactly.
cv::Mat Doubled(const cv::Mat& picture) {
  cv::Mat doubled;
  cv::resize(picture, doubled, picture.size() * 2, 0, 0, cv::INTER_NEAREST);
  return doubled;
}

// Black but for column 5, where the filter answers with 8 * value.
cv::Mat LineAtColumn5(int rows, int cols, int value) {
  cv::Mat picture = cv::Mat::zeros(rows, cols, CV_8UC1);
  picture.col(5).setTo(value);
  return picture;
}

template <class Engine>
class Quality : public EngineTest<Engine> {
 protected:
  float Bright(const cv::Mat& a, const cv::Mat& b) {
    float value = -1.0f;
    this->engine.CalacOverLapImageBright(a, b, value);
    return value;
  }
  float Definition(const cv::Mat& a, const cv::Mat& b) {
    float value = -1.0f;
    this->engine.CalacOverLapImageDefinition(a, b, value);
    return value;
  }
  int Flag(const cv::Mat& a, const cv::Mat& b, int dx = 0, int dy = 0, int rows = 100,
           int cols = 120) {
    int flag = -1;
    this->engine.CalacOverLapImageFlages(dx, dy, rows, cols, a, b, flag);
    return flag;
  }
  void Arm(float bright, float definition) {
    this->engine.m_fBrightThreshold = bright;
    this->engine.m_fDefinitionThreshold = definition;
  }
  static cv::Mat Scene(int type = CV_8UC3, int seed = 4) {
    RandomSource random(seed);
    return pictures::Texture(random, 100, 120, type);
  }
};
TYPED_TEST_SUITE(Quality, Engines, EngineNames);

TYPED_TEST(Quality, IdenticalPicturesMeasureZeroAndPass) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat scene = this->Scene(type);
    EXPECT_TRUE(SameFloat(this->Bright(scene, scene.clone()), 0.0f));
    EXPECT_TRUE(SameFloat(this->Definition(scene, scene.clone()), 0.0f));
    this->Arm(1e-30f, 1e-30f);
    EXPECT_EQ(this->Flag(scene, scene), 1);
    this->Arm(0.0f, 1.0f);
    EXPECT_EQ(this->Flag(scene, scene), 0);
    this->Arm(1.0f, 0.0f);
    EXPECT_EQ(this->Flag(scene, scene), 0);
  }
}

// One-sided: only a shift of a whole frame or more right or down fails.
TYPED_TEST(Quality, OffsetBoundsAreOneSided) {
  const cv::Mat scene = this->Scene();
  this->Arm(40.0f, 15.0f);
  const struct {
    int dx;
    int dy;
    int flag;
  } rows[] = {{120, 0, 0}, {119, 0, 1},      {121, 0, 0},  {-5000, 0, 1}, {0, 100, 0},
              {0, 99, 1},  {0, -2000000, 1}, {119, 99, 1}, {-1, 100, 0},  {120, -1, 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(this->Flag(scene, scene, row.dx, row.dy), row.flag) << row.dx << ", " << row.dy;
  }
}

TYPED_TEST(Quality, BrightIsTheMeanAbsoluteDifference) {
  EXPECT_EQ(
      this->Bright(pictures::Flat(60, 60, CV_8UC1, 100), pictures::Flat(60, 60, CV_8UC1, 140)),
      40.0f);
  EXPECT_EQ(this->Bright(pictures::Flat(60, 60, CV_8UC3, 255), pictures::Flat(60, 60, CV_8UC1, 0)),
            255.0f);
}

TYPED_TEST(Quality, BrightAtItsThresholdFails) {
  const cv::Mat a = this->Scene(CV_8UC3, 4);
  const cv::Mat b = this->Scene(CV_8UC3, 5);
  const float bright = this->Bright(a, b);
  ASSERT_GT(bright, 1.0f);
  this->Arm(bright, 1000.0f);
  EXPECT_EQ(this->Flag(a, b), 0);
  this->Arm(std::nextafter(bright, 1000.0f), 1000.0f);
  EXPECT_EQ(this->Flag(a, b), 1);
}

TYPED_TEST(Quality, DefinitionAtItsThresholdFails) {
  const cv::Mat a = Doubled(LineAtColumn5(11, 11, 4));
  const cv::Mat b = Doubled(LineAtColumn5(11, 11, 2));
  this->Arm(1000.0f, 16.0f);
  EXPECT_EQ(this->Flag(a, b), 0);
  this->Arm(1000.0f, std::nextafter(16.0f, 17.0f));
  EXPECT_EQ(this->Flag(a, b), 1);
}

// 11 x 11 halved pixels leave the single one at row 5, column 5: 8 * 4 - 8 * 2.
// What happens at the margin's pixels does not count.
TYPED_TEST(Quality, SinglePixelOf22By22IsCounted) {
  cv::Mat a = LineAtColumn5(11, 11, 4);
  const cv::Mat b = LineAtColumn5(11, 11, 2);
  EXPECT_EQ(this->Definition(Doubled(a), Doubled(b)), 16.0f);
  a.colRange(8, 11).setTo(200);
  EXPECT_EQ(this->Definition(Doubled(a), Doubled(b)), 16.0f);
  EXPECT_EQ(this->Definition(Doubled(b), Doubled(a)), 16.0f);
}

TYPED_TEST(Quality, FewerThan22RowsOrColumnsGiveNan) {
  const cv::Size sizes[] = {{21, 60}, {60, 21}, {21, 21}, {10, 60}};
  this->Arm(128.0f, 128.0f);
  for (const cv::Size& size : sizes) {
    RandomSource random(3);
    const cv::Mat noise = pictures::Noise(random, size.height, size.width, CV_8UC1);
    EXPECT_TRUE(std::isnan(this->Definition(noise, noise))) << size;
    EXPECT_EQ(this->Flag(noise, noise), 0) << size;
  }
}

// Responses of 8 and 10 are ignored, 11 and 12 are counted.
TYPED_TEST(Quality, ResponseMustExceedTen) {
  const cv::Mat strong = Doubled(LineAtColumn5(11, 11, 4));  // 32
  cv::Mat ten = cv::Mat::zeros(11, 11, CV_8UC1);
  ten.at<unsigned char>(5, 5) = 2;
  ten.at<unsigned char>(4, 5) = 1;
  EXPECT_TRUE(std::isnan(this->Definition(Doubled(ten), strong)));
  cv::Mat eleven = cv::Mat::zeros(11, 11, CV_8UC1);
  eleven.at<unsigned char>(5, 5) = 3;
  eleven.at<unsigned char>(4, 4) = 1;
  EXPECT_EQ(this->Definition(Doubled(eleven), strong), 21.0f);
  EXPECT_EQ(this->Definition(strong, Doubled(eleven)), 21.0f);
  EXPECT_TRUE(std::isnan(this->Definition(Doubled(LineAtColumn5(11, 11, 1)), strong)));
}

TYPED_TEST(Quality, ResponseSaturatesAt255) {
  const cv::Mat a = Doubled(LineAtColumn5(11, 11, 200));
  const cv::Mat b = Doubled(LineAtColumn5(11, 11, 2));
  EXPECT_EQ(this->Definition(a, b), 239.0f);
}

// Edges along the columns count, edges across them do not.
TYPED_TEST(Quality, DefinitionLooksInOneDirectionOnly) {
  cv::Mat bars = cv::Mat::zeros(40, 40, CV_8UC1);
  for (int c = 0; c < 40; c += 4) bars.col(c).setTo(100);
  const cv::Mat upright = Doubled(bars);
  EXPECT_EQ(this->Definition(upright, upright), 0.0f);
  const cv::Mat lying = upright.t();
  EXPECT_TRUE(std::isnan(this->Definition(lying, lying)));
}

TYPED_TEST(Quality, FlatAgainstTexturedIsNanAndFails) {
  const cv::Mat flat = pictures::Flat(100, 120, CV_8UC3, 128);
  this->Arm(1000.0f, 1000.0f);
  EXPECT_TRUE(std::isnan(this->Definition(flat, this->Scene())));
  EXPECT_TRUE(std::isnan(this->Definition(this->Scene(), flat)));
  EXPECT_EQ(this->Flag(flat, this->Scene()), 0);
  EXPECT_EQ(this->Flag(this->Scene(), flat), 0);
}

// 9 columns x 7 rows become 4 x 3.
TYPED_TEST(Quality, OddSizesAreHalvedDownwards) {
  RandomSource random(12);
  const cv::Mat a = pictures::Noise(random, 7, 9, CV_8UC1);
  const cv::Mat b = pictures::Noise(random, 7, 9, CV_8UC1);
  cv::Mat small[2];
  const cv::Mat kernel = cv::getGaussianKernel(5, 1.0, CV_64F);
  for (int k = 0; k < 2; ++k) {
    cv::resize(k == 0 ? a : b, small[k], cv::Size(4, 3), 0, 0, cv::INTER_LINEAR);
    cv::filter2D(small[k], small[k], CV_8U, kernel, cv::Point(-1, -1), 0, 4);
    cv::filter2D(small[k], small[k], CV_8U, kernel.t(), cv::Point(-1, -1), 0, 4);
  }
  int sum = 0;
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < 4; ++c) sum += std::abs(small[0].ptr(r)[c] - small[1].ptr(r)[c]);
  }
  EXPECT_EQ(this->Bright(a, b), static_cast<float>(sum) / 12.0f);
}

// Both are resized to half of the first.
TYPED_TEST(Quality, SecondTakesTheFirstsSize) {
  const cv::Mat a = Doubled(LineAtColumn5(11, 11, 4));
  const cv::Mat tall = Doubled(Doubled(LineAtColumn5(11, 11, 4)));
  EXPECT_EQ(this->Bright(pictures::Flat(8, 8, CV_8UC1, 7), pictures::Flat(50, 3, CV_8UC1, 9)),
            2.0f);
  EXPECT_EQ(this->Bright(a, a), 0.0f);
  float first = -1.0f;
  this->engine.CalacOverLapImageBright(a, tall, first);
  cv::Mat shrunken;
  cv::resize(tall, shrunken, cv::Size(11, 11), 0, 0, cv::INTER_LINEAR);
  EXPECT_EQ(first, this->Bright(a, Doubled(shrunken)));
}

TYPED_TEST(Quality, CallersPicturesAreUnchanged) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat a = this->Scene(type, 4);
    const cv::Mat b = this->Scene(type, 5);
    const cv::Mat beforeA = a.clone();
    const cv::Mat beforeB = b.clone();
    this->Arm(40.0f, 15.0f);
    this->Flag(a, b);
    EXPECT_TRUE(SameMatrix(a, beforeA));
    EXPECT_TRUE(SameMatrix(b, beforeB));
  }
}

TYPED_TEST(Quality, PictureTooSmallToHalveRaisesAndLeavesTheOutputs) {
  const cv::Mat scene = this->Scene(CV_8UC1);
  for (const cv::Mat& bad :
       {cv::Mat(), pictures::Flat(1, 50, CV_8UC1, 4), pictures::Flat(50, 1, CV_8UC1, 4)}) {
    float value = 77.0f;
    int flag = 55;
    EXPECT_EQ(Ending([&] { this->engine.CalacOverLapImageBright(bad, scene, value); }),
              Outcome::kImageLibraryError);
    EXPECT_EQ(Ending([&] { this->engine.CalacOverLapImageDefinition(bad, scene, value); }),
              Outcome::kImageLibraryError);
    EXPECT_EQ(Ending([&] { this->engine.CalacOverLapImageFlages(0, 0, 9, 9, bad, scene, flag); }),
              Outcome::kImageLibraryError);
    EXPECT_EQ(value, 77.0f);
    EXPECT_EQ(flag, 55);
  }
}

}  // namespace

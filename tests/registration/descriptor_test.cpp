#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

#include "support/compare.h"
#include "support/engines.h"
#include "support/pictures.h"

namespace {

using Row = std::array<int, 200>;

int Column(int i, int j, int bin) {
  return 8 * (5 * i + j) + bin;
}

// Offset of a pixel from the corner -> block, -1 outside the patch of -10 to +9.
int BlockOf(int offset) {
  static const int kBlock[20] = {0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4};
  return offset < -10 || offset > 9 ? -1 : kBlock[offset + 10];
}

template <class Engine>
class Descriptor : public EngineTest<Engine> {
 protected:
  Row Describe(const cv::Mat& picture, cv::Point corner) {
    cv::Mat descriptors;
    this->engine.NoRotaFeatureDescriber(picture, {corner}, descriptors);
    EXPECT_EQ(descriptors.type(), CV_16UC1);
    EXPECT_EQ(descriptors.size(), cv::Size(200, 1));
    Row row;
    for (int c = 0; c < 200; ++c) row[c] = descriptors.at<std::uint16_t>(0, c);
    return row;
  }
  // The eight bins summed over all blocks.
  std::array<int, 8> Bins(const cv::Mat& picture, cv::Point corner) {
    const Row row = Describe(picture, corner);
    std::array<int, 8> bins = {};
    for (int c = 0; c < 200; ++c) bins[c % 8] += row[c];
    return bins;
  }
};
TYPED_TEST_SUITE(Descriptor, Engines, EngineNames);

TYPED_TEST(Descriptor, UniformPictureIsAllZero) {
  EXPECT_EQ(this->Describe(pictures::Flat(60, 60, CV_8UC1, 77), cv::Point(30, 30)), Row{});
}

TYPED_TEST(Descriptor, NoCornersGiveNoRowsOf200) {
  cv::Mat descriptors(3, 3, CV_8UC1);
  this->engine.NoRotaFeatureDescriber(pictures::Flat(60, 60, CV_8UC1, 1), {}, descriptors);
  EXPECT_EQ(descriptors.rows, 0);
  EXPECT_EQ(descriptors.cols, 200);
  EXPECT_EQ(descriptors.type(), CV_16UC1);
}

TYPED_TEST(Descriptor, RowsFollowTheCornerList) {
  RandomSource random(5);
  const cv::Mat picture = pictures::Noise(random, 80, 80, CV_8UC1);
  const std::vector<cv::Point> corners = {cv::Point(40, 30), cv::Point(20, 50), cv::Point(40, 30)};
  cv::Mat descriptors;
  this->engine.NoRotaFeatureDescriber(picture, corners, descriptors);
  ASSERT_EQ(descriptors.rows, 3);
  EXPECT_TRUE(SameMatrix(descriptors.row(0), descriptors.row(2)));
  EXPECT_FALSE(SameMatrix(descriptors.row(0), descriptors.row(1)));
  for (int k = 0; k < 3; ++k) {
    const Row row = this->Describe(picture, corners[k]);
    for (int c = 0; c < 200; ++c) EXPECT_EQ(int{descriptors.at<std::uint16_t>(k, c)}, row[c]);
  }
}

// One bright pixel gives four gradients: to its left one to the right, and so on.
// Every position of it round the patch shows which pixel counts in which block,
// that -10 and +9 belong to the patch, and that -11 and +10 do not.
TYPED_TEST(Descriptor, PatchReachesFromMinusTenToPlusNine) {
  const cv::Point corner(30, 33);
  const struct {
    int dx;
    int dy;
    int bin;
  } seenFrom[] = {{-2, 0, 0}, {2, 0, 4}, {0, -2, 2}, {0, 2, 6}};
  for (int dy = -13; dy <= 12; ++dy) {
    for (int dx = -13; dx <= 12; ++dx) {
      cv::Mat picture = cv::Mat::zeros(70, 70, CV_8UC1);
      picture.at<unsigned char>(corner.y + dy, corner.x + dx) = 50;
      Row expected{};
      for (const auto& pixel : seenFrom) {
        const int i = BlockOf(dx + pixel.dx);
        const int j = BlockOf(dy + pixel.dy);
        if (i >= 0 && j >= 0) expected[Column(i, j, pixel.bin)] += 50;
      }
      ASSERT_EQ(this->Describe(picture, corner), expected) << dx << ", " << dy;
    }
  }
}

TYPED_TEST(Descriptor, StepEdgesFallIntoTheFourStraightBins) {
  const cv::Point corner(30, 30);
  cv::Mat rightBright = pictures::Flat(60, 60, CV_8UC1, 50);
  rightBright.colRange(30, 60).setTo(150);
  cv::Mat flipped;
  // Four columns see the step, each in 20 rows, with 100 grey levels.
  EXPECT_EQ(this->Bins(rightBright, corner), (std::array<int, 8>{8000, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(this->Bins(rightBright.t(), corner), (std::array<int, 8>{0, 0, 8000, 0, 0, 0, 0, 0}));
  cv::flip(rightBright, flipped, 1);
  EXPECT_EQ(this->Bins(flipped, corner), (std::array<int, 8>{0, 0, 0, 0, 8000, 0, 0, 0}));
  cv::Mat bottomDark = flipped.t();
  EXPECT_EQ(this->Bins(bottomDark, corner), (std::array<int, 8>{0, 0, 0, 0, 0, 0, 8000, 0}));
}

// Two pixels 5 brighter than the rest: one pixel sees (5, 5), length 7, one the
// opposite, and four see one of the two alone.
TYPED_TEST(Descriptor, DiagonalGradientsFallOnTheirBinsLowerBound) {
  cv::Mat right = pictures::Flat(60, 60, CV_8UC1, 10);
  right.at<unsigned char>(30, 32) = 15;
  right.at<unsigned char>(32, 30) = 15;
  EXPECT_EQ(this->Bins(right, cv::Point(30, 30)), (std::array<int, 8>{5, 7, 5, 0, 5, 7, 5, 0}));
  cv::Mat left = pictures::Flat(60, 60, CV_8UC1, 10);
  left.at<unsigned char>(30, 28) = 15;
  left.at<unsigned char>(32, 30) = 15;
  EXPECT_EQ(this->Bins(left, cv::Point(30, 30)), (std::array<int, 8>{5, 0, 5, 7, 5, 0, 5, 7}));
}

TYPED_TEST(Descriptor, CornerAtTheOriginSeesTheValidBandOnly) {
  cv::Mat picture(50, 50, CV_8UC1);
  for (int c = 0; c < 50; ++c) picture.col(c).setTo(5 * c);
  Row expected{};
  for (int i : {3, 4}) {
    for (int j : {3, 4}) expected[Column(i, j, 0)] = 16 * 20;
  }
  EXPECT_EQ(this->Describe(picture, cv::Point(0, 0)), expected);
}

TYPED_TEST(Descriptor, CornerFarOutsideIsAllZero) {
  RandomSource random(6);
  const cv::Mat picture = pictures::Noise(random, 40, 40, CV_8UC1);
  EXPECT_EQ(this->Describe(picture, cv::Point(-100, 20)), Row{});
  EXPECT_EQ(this->Describe(picture, cv::Point(20, 4000)), Row{});
  EXPECT_EQ(this->Describe(pictures::Flat(1, 1, CV_8UC1, 9), cv::Point(0, 0)), Row{});
}

TYPED_TEST(Descriptor, RightEdgeReadsTheFirstSampleOfTheNextRow) {
  // In the middle of a larger picture, so that rows are padded with 99.
  cv::Mat whole = pictures::Flat(60, 80, CV_8UC1, 99);
  cv::Mat picture = whole(cv::Rect(5, 5, 50, 50));
  picture.setTo(0);
  picture.at<unsigned char>(26, 0) = 80;
  Row expected{};
  expected[Column(2, 2, 0)] = 80;
  EXPECT_EQ(this->Describe(picture, cv::Point(48, 25)), expected);
}

TYPED_TEST(Descriptor, RowBelowTheBottomReadsAsZero) {
  cv::Mat whole = pictures::Flat(60, 80, CV_8UC1, 99);
  cv::Mat picture = whole(cv::Rect(5, 5, 50, 50));
  picture.setTo(100);
  Row expected{};
  for (int i = 0; i < 5; ++i) expected[Column(i, 2, 6)] = 4 * 100;
  EXPECT_EQ(this->Describe(picture, cv::Point(25, 48)), expected);
}

TYPED_TEST(Descriptor, ColourSamplesAreReadAsOneChannelWide) {
  RandomSource random(7);
  const cv::Mat colour = pictures::Noise(random, 60, 60, CV_8UC3);
  EXPECT_EQ(this->Describe(colour, cv::Point(30, 30)),
            this->Describe(colour.reshape(1), cv::Point(30, 30)));
}

TYPED_TEST(Descriptor, CallersPictureKeepsTypeAndPixels) {
  RandomSource random(8);
  cv::Mat picture = pictures::Noise(random, 60, 60, CV_8UC1);
  const cv::Mat before = picture.clone();
  this->Describe(picture, cv::Point(30, 30));
  EXPECT_TRUE(SameMatrix(picture, before));
}

}  // namespace

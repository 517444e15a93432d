#include <gtest/gtest.h>

#include <vector>

#include "registration/corner_pictures.h"
#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"
#include "support/pictures.h"

namespace {

template <class Engine>
class Corners : public EngineTest<Engine> {
 protected:
  std::vector<cv::Point> Find(const cv::Mat& picture, int level, int budget = 8) {
    this->engine.SetParameter(level, budget, 0, 1);
    std::vector<cv::Point> corners;
    this->engine.FindHarrisCornerCoordianteFun(picture, corners);
    return corners;
  }
  static cv::Mat Textured(int rows, int cols) {
    RandomSource random(20240601);
    return pictures::Texture(random, rows, cols, CV_8UC1);
  }
};
TYPED_TEST_SUITE(Corners, Engines, EngineNames);

TYPED_TEST(Corners, UniformPictureHasNone) {
  for (int level : {-1, 0, 1, 2, 3, 4, 8}) {
    EXPECT_TRUE(this->Find(pictures::Flat(300, 300, CV_8UC1, 128), level).empty()) << level;
  }
}

TYPED_TEST(Corners, FortyRowsOrColumnsHaveNone) {
  EXPECT_TRUE(this->Find(this->Textured(40, 1000), 3).empty());
  EXPECT_TRUE(this->Find(this->Textured(1000, 40), 3).empty());
  EXPECT_FALSE(this->Find(this->Textured(41, 1000), 3).empty());
  EXPECT_FALSE(this->Find(this->Textured(1000, 41), 3).empty());
}

TYPED_TEST(Corners, EightyOneRowsHalvedHaveNone) {
  for (int level : {-1, 0, 1, 2}) {
    EXPECT_TRUE(this->Find(this->Textured(81, 1000), level).empty()) << level;
    EXPECT_TRUE(this->Find(this->Textured(1000, 81), level).empty()) << level;
    EXPECT_FALSE(this->Find(this->Textured(82, 1000), level).empty()) << level;
  }
}

TYPED_TEST(Corners, OutputStaysAsItWasWhereThereAreNone) {
  std::vector<cv::Point> corners = {cv::Point(7, 9)};
  this->engine.FindHarrisCornerCoordianteFun(pictures::Flat(200, 200, CV_8UC1, 9), corners);
  EXPECT_TRUE(SamePoints(corners, {cv::Point(7, 9)}));
}

TYPED_TEST(Corners, KeepTwentyPixelsFromTheBorder) {
  for (const cv::Point& p : this->Find(this->Textured(150, 170), 8)) {
    EXPECT_GE(p.x, 20);
    EXPECT_GE(p.y, 20);
    EXPECT_LE(p.x, 170 - 21);
    EXPECT_LE(p.y, 150 - 21);
  }
}

TYPED_TEST(Corners, AreEvenAndDoublyFarFromTheBorderAtSmallLevels) {
  for (int level : {-1, 0, 1, 2}) {
    const std::vector<cv::Point> corners = this->Find(this->Textured(301, 401), level);
    ASSERT_FALSE(corners.empty());
    for (const cv::Point& p : corners) {
      EXPECT_EQ(p.x % 2, 0);
      EXPECT_EQ(p.y % 2, 0);
      EXPECT_GE(p.x, 40);
      EXPECT_GE(p.y, 40);
      EXPECT_LE(p.x, 2 * (200 - 21));
      EXPECT_LE(p.y, 2 * (150 - 21));
    }
  }
}

TYPED_TEST(Corners, RichTextureFillsTheBudgetExactly) {
  const cv::Mat picture = this->Textured(1000, 1300);
  EXPECT_EQ(this->Find(picture, 1).size(), 500u);
  EXPECT_EQ(this->Find(picture, 2).size(), 420u);
  EXPECT_EQ(this->Find(picture, 3).size(), 340u);
  EXPECT_EQ(this->Find(picture, 4).size(), 260u);
  EXPECT_EQ(this->Find(picture, 7).size(), 20u);
  EXPECT_EQ(this->Find(picture, 3, 7).size(), 318u);  // 15 * 340 / 16 = 318.75
}

TYPED_TEST(Corners, BudgetOfZeroKeepsNone) {
  EXPECT_TRUE(this->Find(this->Textured(300, 300), 3, -8).empty());
  EXPECT_TRUE(this->Find(this->Textured(300, 300), 1, -8).empty());
}

TYPED_TEST(Corners, NegativeBudgetPlacesNoLimit) {
  const cv::Mat picture = RampWithBar(41, 100);
  EXPECT_TRUE(SamePoints(this->Find(picture, 7, -7), {cv::Point(20, 20)}));  // budget 1
  EXPECT_TRUE(SamePoints(this->Find(picture, 8), ColumnsOfRow20(100)));
  EXPECT_TRUE(SamePoints(this->Find(picture, 3, -9), ColumnsOfRow20(100)));
}

// The divisor of the mean is the whole area. Divided by the interior, the mean of
// equal responses would be their own value, and none would exceed it.
TYPED_TEST(Corners, MeanIsTakenOverTheWholeArea) {
  EXPECT_TRUE(SamePoints(this->Find(RampWithBar(41, 100), 3), ColumnsOfRow20(100)));
}

TYPED_TEST(Corners, EqualNeighboursAllBecomeCorners) {
  const std::vector<cv::Point> corners = this->Find(RampWithBar(61, 100), 3);
  int neighbours = 0;
  for (const cv::Point& a : corners) {
    for (const cv::Point& b : corners) neighbours += b == a + cv::Point(1, 0);
  }
  EXPECT_EQ(neighbours, 59);
}

TYPED_TEST(Corners, StraightEdgeHasNegativeResponseAndNoCorner) {
  cv::Mat picture = pictures::Flat(120, 120, CV_8UC1, 10);
  picture.colRange(60, 120).setTo(200);
  EXPECT_TRUE(this->Find(picture, 3).empty());
  EXPECT_TRUE(this->Find(picture.t(), 3).empty());
}

// The level 0 is small for the search and not small for the setter.
TYPED_TEST(Corners, SearchRewritesTheDownScaleByItsOwnRule) {
  const struct {
    int level;
    int afterSetter;
    int afterSearch;
  } rows[] = {{-1, 1, 2}, {0, 1, 2}, {1, 2, 2}, {2, 2, 2}, {3, 1, 1}, {8, 1, 1}};
  for (const auto& row : rows) {
    this->engine.SetParameter(row.level, 8, 0, 1);
    EXPECT_EQ(this->engine.m_nDownScale, row.afterSetter) << row.level;
    std::vector<cv::Point> corners;
    this->engine.FindHarrisCornerCoordianteFun(Doubled(RampWithBar(41, 100)), corners);
    EXPECT_EQ(this->engine.m_nDownScale, row.afterSearch) << row.level;
  }
}

TYPED_TEST(Corners, HalvedSearchGivesFullResolutionPositions) {
  std::vector<cv::Point> expected = ColumnsOfRow20(100);
  for (cv::Point& p : expected) p *= 2;
  EXPECT_TRUE(SamePoints(this->Find(Doubled(RampWithBar(41, 100)), 1), expected));
  EXPECT_TRUE(SamePoints(this->Find(Doubled(RampWithBar(41, 100)), -1), expected));
}

// The scaling back counts output elements from the front, whatever was there.
TYPED_TEST(Corners, PointsAlreadyInTheListAreScaledInsteadOfTheLastOnes) {
  std::vector<cv::Point> expected = {cv::Point(7, 9), cv::Point(1, 2)};
  for (const cv::Point& p : ColumnsOfRow20(100)) expected.push_back(p);
  for (std::size_t k = 0; k + 2 < expected.size(); ++k) expected[k] *= 2;

  std::vector<cv::Point> corners = {cv::Point(7, 9), cv::Point(1, 2)};
  this->engine.FindHarrisCornerCoordianteFun(Doubled(RampWithBar(41, 100)), corners);
  EXPECT_TRUE(SamePoints(corners, expected));
}

TYPED_TEST(Corners, CallersPictureIsNotModified) {
  cv::Mat picture = this->Textured(120, 130);
  const cv::Mat before = picture.clone();
  this->Find(picture, 1);
  this->Find(picture, 3);
  EXPECT_TRUE(SameMatrix(picture, before));
}

// Halving to a width of 0 is an error of the image library.
TYPED_TEST(Corners, PictureTooNarrowToHalveRaisesAndLeavesTheList) {
  std::vector<cv::Point> corners = {cv::Point(7, 9)};
  for (const cv::Mat& picture : {cv::Mat(), this->Textured(100, 1), this->Textured(1, 100)}) {
    EXPECT_EQ(Ending([&] { this->engine.FindHarrisCornerCoordianteFun(picture, corners); }),
              Outcome::kImageLibraryError);
    EXPECT_TRUE(SamePoints(corners, {cv::Point(7, 9)}));
  }
}

}  // namespace

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/engines.h"
#include "support/pictures.h"

namespace {

template <class Engine>
class CornerOrder : public EngineTest<Engine> {
 protected:
  // A block whose response grows with the fourth power of its contrast.
  static void Block(cv::Mat& picture, int x, int y, int contrast) {
    const cv::Rect area(x - 2, y - 2, 5, 5);
    picture(area).setTo(picture.at<unsigned char>(y, x) + contrast);
  }
  // Which block the corner belongs to.
  static char Nearest(const cv::Point& p, const std::vector<cv::Point>& blocks) {
    for (std::size_t k = 0; k < blocks.size(); ++k) {
      if (std::abs(p.x - blocks[k].x) < 8 && std::abs(p.y - blocks[k].y) < 8) {
        return static_cast<char>('A' + k);
      }
    }
    return '?';
  }
};
TYPED_TEST_SUITE(CornerOrder, Engines, EngineNames);

// A and B are equally strong; C and D are weaker than half of them. C is 16
// pixels from A, D 40 pixels from B. So A and B carry the capped radius and come
// first, in raster order of their corners; then D, then C.
TYPED_TEST(CornerOrder, StrongOnesFirstThenTheLoneliest) {
  const std::vector<cv::Point> blocks = {cv::Point(50, 60), cv::Point(130, 60), cv::Point(66, 60),
                                         cv::Point(130, 100)};
  cv::Mat picture = pictures::Flat(140, 180, CV_8UC1, 20);
  this->Block(picture, 50, 60, 200);
  this->Block(picture, 130, 60, 200);
  this->Block(picture, 66, 60, 120);
  this->Block(picture, 130, 100, 120);
  this->engine.SetParameter(3, 8, 0, 1);
  std::vector<cv::Point> corners;
  this->engine.FindHarrisCornerCoordianteFun(picture, corners);

  std::string order;
  std::vector<cv::Point> strong;
  for (const cv::Point& p : corners) {
    char block = this->Nearest(p, blocks);
    if (block == 'A' || block == 'B') {
      strong.push_back(p);
      block = 'S';
    }
    if (order.empty() || order.back() != block) order += block;
  }
  EXPECT_EQ(order, "SDC");
  for (std::size_t k = 1; k < strong.size(); ++k) {
    const cv::Point a = strong[k - 1];
    const cv::Point b = strong[k];
    EXPECT_TRUE(a.y < b.y || (a.y == b.y && a.x < b.x)) << a << " before " << b;
  }
}

// The gradients are (g, g) above the crease and (g, -g) below it. Taken signed,
// their products cancel and the crease is a strong corner; taken absolute, they
// add up to a straight edge's response, below the mean that the block sets.
TYPED_TEST(CornerOrder, MixedTermIsNeverNegative) {
  cv::Mat picture = pictures::Flat(160, 160, CV_8UC1, 20);
  for (int r = 40; r < 62; ++r) {
    for (int c = 40; c < 62; ++c) {
      const int fold = r <= 50 ? 50 - r : r - 51;
      picture.at<unsigned char>(r, c) = static_cast<unsigned char>(40 + 6 * (c - 40) + 6 * fold);
    }
  }
  this->engine.SetParameter(8, 8, 0, 1);
  std::vector<cv::Point> corners;
  this->engine.FindHarrisCornerCoordianteFun(picture, corners);
  ASSERT_FALSE(corners.empty());
  for (const cv::Point& p : corners) {
    EXPECT_FALSE(std::abs(p.x - 50) <= 4 && std::abs(p.y - 50) <= 2) << p;
  }
}

}  // namespace

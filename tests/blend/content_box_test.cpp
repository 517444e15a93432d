#include <gtest/gtest.h>

#include "support/engines.h"

namespace {

// One axis: a box of 100 to 600 and a frame from a to b.
struct Row {
  const char* name;
  int a, b;
  int boxMin, boxMax;
};

const Row kRows[] = {
    {"inside", 200, 300, 100, 600},
    {"the box itself", 100, 600, 100, 600},
    {"starts at the minimum, ends beyond", 100, 700, 100, 600},
    {"sticks out above", 150, 700, 100, 700},
    {"starts one above the minimum", 101, 601, 100, 601},
    {"sticks out below", 50, 550, 50, 600},
    {"starts below, ends at the maximum", 50, 600, 100, 600},
    {"starts below, ends one before", 99, 599, 99, 600},
    {"wider on both sides", 50, 700, 100, 600},
    {"wholly above", 650, 900, 100, 900},
    {"wholly below", -90, 20, -90, 600},
};

template <class Engine>
class ContentBox : public EngineTest<Engine> {
 protected:
  cv::Point boxMin;
  cv::Point boxMax;
};
TYPED_TEST_SUITE(ContentBox, Engines, EngineNames);

TYPED_TEST(ContentBox, EveryRuleOnBothAxesIndependently) {
  for (const Row& x : kRows) {
    for (const Row& y : kRows) {
      this->engine.outputImageCoordate(cv::Point(100, 1100), cv::Point(600, 1600), 123, -456,
                                       y.b - y.a, x.b - x.a, cv::Point(x.a, y.a + 1000),
                                       this->boxMin, this->boxMax);
      EXPECT_EQ(this->boxMin, cv::Point(x.boxMin, y.boxMin + 1000)) << x.name << " / " << y.name;
      EXPECT_EQ(this->boxMax, cv::Point(x.boxMax, y.boxMax + 1000)) << x.name << " / " << y.name;
    }
  }
}

// An inverted box, as growth at the top-right corner leaves it.
TYPED_TEST(ContentBox, InvertedBoxFollowsTheSameRules) {
  this->engine.outputImageCoordate(cv::Point(500, 0), cv::Point(300, 10), 0, 0, 10, 50,
                                   cv::Point(600, 0), this->boxMin, this->boxMax);
  EXPECT_EQ(this->boxMin.x, 500);
  EXPECT_EQ(this->boxMax.x, 650);
  this->engine.outputImageCoordate(cv::Point(500, 0), cv::Point(300, 10), 0, 0, 10, 50,
                                   cv::Point(400, 0), this->boxMin, this->boxMax);
  EXPECT_EQ(this->boxMin.x, 500);
  EXPECT_EQ(this->boxMax.x, 300);
}

}  // namespace

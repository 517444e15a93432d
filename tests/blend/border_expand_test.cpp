#include <gtest/gtest.h>

#include "support/compare.h"
#include "support/engines.h"

namespace {

// A mosaic of 100 columns x 80 rows, a frame of 20 x 10; growth by 7 rows and 9
// columns, so that none of the numbers can stand in for another.
struct Row {
  const char* name;
  cv::Point position;
  cv::Point offset;
  int top, bottom, left, right;
  cv::Point moved;
  cv::Point minMoved;
  cv::Point maxMoved;
};

const Row kRows[] = {
    {"top left", {5, 5}, {-5, -5}, 7, 0, 9, 0, {9, 7}, {9, 7}, {9, 7}},
    {"top right", {70, 5}, {10, -8}, 7, 0, 0, 9, {0, 7}, {0, 14}, {0, 0}},
    {"top", {30, 5}, {1, -6}, 7, 0, 0, 0, {0, 7}, {0, 7}, {0, 7}},
    {"bottom left", {5, 65}, {-9, 5}, 0, 7, 9, 0, {9, 0}, {9, 0}, {9, 0}},
    {"bottom right", {70, 65}, {15, 9}, 0, 7, 0, 9, {0, 0}, {0, 0}, {0, 0}},
    {"bottom", {30, 65}, {0, 8}, 0, 7, 0, 0, {0, 0}, {0, 0}, {0, 0}},
    {"left", {5, 30}, {-7, 2}, 0, 0, 9, 0, {9, 0}, {9, 0}, {9, 0}},
    {"right", {70, 30}, {11, 0}, 0, 0, 0, 9, {0, 0}, {0, 0}, {0, 0}},
    {"inside", {30, 30}, {5, -5}, 0, 0, 0, 0, {0, 0}, {0, 0}, {0, 0}},
    // Touching an edge grows, one pixel less does not.
    {"touches the top", {30, 4}, {0, -4}, 7, 0, 0, 0, {0, 7}, {0, 7}, {0, 7}},
    {"one below the top", {30, 4}, {0, -3}, 0, 0, 0, 0, {0, 0}, {0, 0}, {0, 0}},
    {"touches the left", {4, 30}, {-4, 0}, 0, 0, 9, 0, {9, 0}, {9, 0}, {9, 0}},
    {"one off the left", {4, 30}, {-3, 0}, 0, 0, 0, 0, {0, 0}, {0, 0}, {0, 0}},
    {"touches the bottom", {30, 60}, {0, 10}, 0, 7, 0, 0, {0, 0}, {0, 0}, {0, 0}},
    {"one above the bottom", {30, 60}, {0, 9}, 0, 0, 0, 0, {0, 0}, {0, 0}, {0, 0}},
    {"touches the right", {70, 30}, {10, 0}, 0, 0, 0, 9, {0, 0}, {0, 0}, {0, 0}},
    {"one off the right", {70, 30}, {9, 0}, 0, 0, 0, 0, {0, 0}, {0, 0}, {0, 0}},
    // Far beyond: still one step.
    {"far up", {30, 5}, {0, -500}, 7, 0, 0, 0, {0, 7}, {0, 7}, {0, 7}},
    {"far right and down", {70, 65}, {900, 900}, 0, 7, 0, 9, {0, 0}, {0, 0}, {0, 0}},
};

template <class Engine>
class Border : public EngineTest<Engine> {
 protected:
  void Grow(const cv::Mat& mosaic, cv::Point position, cv::Point offset) {
    this->engine.BorderExpand(mosaic, 7, 9, offset.x, offset.y, 10, 20, 100, 80, position, grown,
                              moved, cv::Point(40, 41), cv::Point(60, 51), boxMin, boxMax);
  }
  cv::Mat grown;
  cv::Point moved;
  cv::Point boxMin;
  cv::Point boxMax;
};
TYPED_TEST_SUITE(Border, Engines, EngineNames);

TYPED_TEST(Border, EveryCaseOfTheTable) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat mosaic(80, 100, type, cv::Scalar(11, 22, 33));
    for (const Row& row : kRows) {
      SCOPED_TRACE(row.name);
      this->Grow(mosaic, row.position, row.offset);
      cv::Mat expected =
          cv::Mat::zeros(80 + row.top + row.bottom, 100 + row.left + row.right, type);
      mosaic.copyTo(expected(cv::Rect(row.left, row.top, 100, 80)));
      EXPECT_TRUE(SameMatrix(this->grown, expected));
      EXPECT_EQ(this->moved, row.position + row.moved);
      EXPECT_EQ(this->boxMin, cv::Point(40, 41) + row.minMoved);
      EXPECT_EQ(this->boxMax, cv::Point(60, 51) + row.maxMoved);
    }
  }
}

TYPED_TEST(Border, NoGrowthSharesTheMosaicAndGrowthDoesNot) {
  const cv::Mat mosaic(80, 100, CV_8UC3, cv::Scalar(1, 2, 3));
  this->Grow(mosaic, cv::Point(30, 30), cv::Point(0, 0));
  EXPECT_EQ(this->grown.data, mosaic.data);
  this->Grow(mosaic, cv::Point(30, 30), cv::Point(-30, 0));
  EXPECT_NE(this->grown.data, mosaic.data);
  EXPECT_EQ(mosaic.size(), cv::Size(100, 80));
}

// The column count comes before the row count, unlike in the other pairs.
TYPED_TEST(Border, MosaicColumnsComeBeforeItsRows) {
  const cv::Mat mosaic(80, 100, CV_8UC1, cv::Scalar(5));
  this->engine.BorderExpand(mosaic, 7, 9, 0, 0, 10, 20, 300, 80, cv::Point(85, 30), this->grown,
                            this->moved, cv::Point(), cv::Point(), this->boxMin, this->boxMax);
  EXPECT_EQ(this->grown.size(), cv::Size(100, 80));
}

}  // namespace

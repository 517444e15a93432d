#include <gtest/gtest.h>

#include <string>

#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"

namespace {

// Every pixel holds its own place, so that a piece tells where it was cut.
cv::Mat Places(int rows, int cols, int base) {
  cv::Mat picture(rows, cols, CV_32SC1);
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < cols; ++c) picture.at<int>(r, c) = base + 10000 * r + c;
  }
  return picture;
}

struct Row {
  std::string name;
  int dx;
  int dy;
  cv::Rect first;  // relative to the origin
  cv::Rect second;
};

// A frame of 100 columns x 80 rows.
const Row kRows[] = {
    {"whole", 0, 0, {0, 0, 100, 80}, {0, 0, 100, 80}},
    {"right and down", 30, 20, {30, 20, 70, 60}, {0, 0, 70, 60}},
    {"left and up", -30, -20, {0, 0, 70, 60}, {30, 20, 70, 60}},
    {"left and down", -30, 20, {0, 20, 70, 60}, {30, 0, 70, 60}},
    {"right and up", 30, -20, {30, 0, 70, 60}, {0, 20, 70, 60}},
    {"up alone counts as right and up", 0, -1, {0, 0, 100, 79}, {0, 1, 100, 79}},
    {"left alone counts as left and down", -1, 0, {0, 0, 99, 80}, {1, 0, 99, 80}},
    {"down alone", 0, 5, {0, 5, 100, 75}, {0, 0, 100, 75}},
    {"a single pixel", 99, -79, {99, 0, 1, 1}, {0, 79, 1, 1}},
};

template <class Engine>
class Extraction : public EngineTest<Engine> {
 protected:
  void FromMosaic(cv::Point origin, int dx, int dy) {
    this->engine.TakeOutOverLapImageFromMoasicImage(origin, dx, dy, mosaic, frame, one, two);
  }
  const cv::Mat mosaic = Places(400, 500, 0);
  const cv::Mat frame = Places(80, 100, 100000000);
  cv::Mat one = cv::Mat(1, 1, CV_8UC1, cv::Scalar(7));
  cv::Mat two = cv::Mat(1, 1, CV_8UC1, cv::Scalar(8));
};
TYPED_TEST_SUITE(Extraction, Engines, EngineNames);

TYPED_TEST(Extraction, CutsTheSharedPiecesOfMosaicAndFrame) {
  const cv::Point origin(200, 150);
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    this->FromMosaic(origin, row.dx, row.dy);
    EXPECT_TRUE(SameMatrix(this->one, this->mosaic(row.first + origin)));
    EXPECT_TRUE(SameMatrix(this->two, this->frame(row.second)));
  }
}

TYPED_TEST(Extraction, PlainFramesIgnoreTheOrigin) {
  for (const cv::Point& origin : {cv::Point(200, 150), cv::Point(0, 0), cv::Point(-9, 9999)}) {
    for (const Row& row : kRows) {
      SCOPED_TRACE(row.name);
      this->engine.TakeOutOverLapImage(origin, row.dx, row.dy, this->mosaic, this->frame, this->one,
                                       this->two);
      EXPECT_TRUE(SameMatrix(this->one, this->mosaic(row.first)));
      EXPECT_TRUE(SameMatrix(this->two, this->frame(row.second)));
    }
  }
}

TYPED_TEST(Extraction, PiecesAreDeepCopiesOfTheirOwnTypes) {
  const cv::Mat colour(400, 500, CV_8UC3, cv::Scalar(1, 2, 3));
  this->engine.TakeOutOverLapImageFromMoasicImage(cv::Point(0, 0), 0, 0, colour, this->frame,
                                                  this->one, this->two);
  EXPECT_EQ(this->one.type(), CV_8UC3);
  EXPECT_EQ(this->two.type(), CV_32SC1);
  EXPECT_NE(this->one.data, colour.data);
  EXPECT_NE(this->two.data, this->frame.data);
  EXPECT_TRUE(this->one.isContinuous());
}

TYPED_TEST(Extraction, ShiftOfAWholeFrameGivesEmptyPieces) {
  for (const cv::Point& shift : {cv::Point(100, 0), cv::Point(-100, 0), cv::Point(0, 80),
                                 cv::Point(0, -80), cv::Point(100, -80)}) {
    this->FromMosaic(cv::Point(200, 150), shift.x, shift.y);
    EXPECT_TRUE(this->one.empty()) << shift;
    EXPECT_TRUE(this->two.empty()) << shift;
  }
}

TYPED_TEST(Extraction, RangeOutsideAnImageRaisesAndLeavesTheOutputs) {
  const struct {
    cv::Point origin;
    int dx;
    int dy;
  } rows[] = {{{200, 150}, 101, 0},   {{200, 150}, -101, 0}, {{200, 150}, 0, 81},
              {{200, 150}, 0, -81},   {{200, 150}, 101, -3}, {{401, 150}, 0, 0},
              {{200, 321}, 0, 0},     {{-1, 0}, 0, 0},       {{0, -1}, 0, 0},
              {{200, 150}, -101, 81}, {{200, 150}, -101, -1}};
  for (const auto& row : rows) {
    EXPECT_EQ(Ending([&] { this->FromMosaic(row.origin, row.dx, row.dy); }),
              Outcome::kImageLibraryError)
        << row.origin << ' ' << row.dx << ' ' << row.dy;
    EXPECT_EQ(int{this->one.ptr(0)[0]}, 7);
    EXPECT_EQ(int{this->two.ptr(0)[0]}, 8);
  }
}

// Rows and columns come from the second image.
TYPED_TEST(Extraction, FirstSmallerThanSecondRaises) {
  EXPECT_EQ(Ending([&] {
              this->engine.TakeOutOverLapImage(cv::Point(), 0, 0, this->frame, this->mosaic,
                                               this->one, this->two);
            }),
            Outcome::kImageLibraryError);
}

}  // namespace

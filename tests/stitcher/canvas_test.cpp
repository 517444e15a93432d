#include <gtest/gtest.h>

#include <cstring>
#include <ostream>

#include "support/compare.h"
#include "support/stitcher_access.h"

namespace {

JQStitchingRect Box(int x1, int y1, int x2, int y2) {
  return {x1, y1, x2, y2};
}

void ExpectBox(const JQStitchingRect& box, int x1, int y1, int x2, int y2) {
  EXPECT_EQ(box.x1, x1);
  EXPECT_EQ(box.y1, y1);
  EXPECT_EQ(box.x2, x2);
  EXPECT_EQ(box.y2, y2);
}

// A canvas of 100 columns and 80 rows with one frame of 50 x 40 at (25, 20).
class Canvas : public ::testing::Test {
 protected:
  Canvas() : frame(40, 50, CV_8UC3, cv::Scalar::all(9)) { stitcher.initResultMat(&frame); }

  // Grows the canvas for a frame of the same size moved by (dx, dy).
  void Extend(int dx, int dy) {
    stitcher.m_frameOffset = cv::Point(dx, dy);
    stitcher.extendResultMat(&frame);
  }
  void ExpectCanvas(int rows, int cols) {
    EXPECT_EQ(stitcher.m_resultMat.rows, rows);
    EXPECT_EQ(stitcher.m_resultMat.cols, cols);
    EXPECT_EQ(stitcher.m_canvasRows, rows);
    EXPECT_EQ(stitcher.m_canvasCols, cols);
    // The first frame, and nothing else, is where the position says.
    cv::Mat expected = cv::Mat::zeros(rows, cols, CV_8UC3);
    frame.copyTo(expected(cv::Rect(stitcher.m_framePos, frame.size())));
    EXPECT_TRUE(SameMatrix(stitcher.m_resultMat, expected));
  }

  cv::Mat frame;
  JQImageStitching stitcher;
};

}  // namespace

TEST(CanvasStart, FrameOfFiveRowsAndSevenColumns) {
  JQImageStitching stitcher;
  cv::Mat frame(5, 7, CV_8UC3, cv::Scalar(1, 2, 3));
  stitcher.initResultMat(&frame);
  EXPECT_EQ(stitcher.m_canvasRows, 10);
  EXPECT_EQ(stitcher.m_canvasCols, 14);
  EXPECT_EQ(stitcher.m_frameRows, 5);
  EXPECT_EQ(stitcher.m_frameCols, 7);
  EXPECT_EQ(stitcher.m_frameSize, cv::Size(7, 5));
  EXPECT_EQ(stitcher.m_framePos, cv::Point(4, 3));
  ExpectBox(stitcher.m_contentRect, 4, 3, 11, 8);
  ExpectBox(stitcher.m_cutRect, 0, 0, 0, 0);
  cv::Mat expected = cv::Mat::zeros(10, 14, CV_8UC3);
  expected(cv::Rect(4, 3, 7, 5)).setTo(cv::Scalar(1, 2, 3));
  EXPECT_TRUE(SameMatrix(stitcher.m_resultMat, expected));
}

TEST(CanvasStart, OneChannelFrameMakesAOneChannelCanvas) {
  JQImageStitching stitcher;
  cv::Mat frame(4, 4, CV_8UC1, cv::Scalar(200));
  stitcher.initResultMat(&frame);
  EXPECT_EQ(stitcher.m_resultMat.type(), CV_8UC1);
  EXPECT_EQ(stitcher.m_resultMat.at<uchar>(2, 2), 200);
  EXPECT_EQ(stitcher.m_resultMat.at<uchar>(1, 2), 0);
}

TEST(CanvasStart, SecondStartBeginsAnew) {
  JQImageStitching stitcher;
  cv::Mat frame(4, 4, CV_8UC1, cv::Scalar(200));
  stitcher.initResultMat(&frame);
  cv::Mat next(2, 6, CV_8UC3, cv::Scalar::all(5));
  stitcher.initResultMat(&next);
  EXPECT_EQ(stitcher.m_resultMat.size(), cv::Size(12, 4));
  EXPECT_EQ(stitcher.m_resultMat.type(), CV_8UC3);
}

TEST_F(Canvas, FrameInsideGrowsNothing) {
  Extend(5, -7);
  ExpectCanvas(80, 100);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(25, 20));
  ExpectBox(stitcher.m_contentRect, 25, 20, 75, 60);
}

// Exactly at the top, the frame's bottom comes to lie at twice its height, which is
// the old canvas height: the bottom grows too.
TEST_F(Canvas, TouchingTheTopGrowsItAndThenTheBottom) {
  Extend(0, -20);
  ExpectCanvas(160, 100);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(25, 60));
  ExpectBox(stitcher.m_contentRect, 25, 60, 75, 100);
}

TEST_F(Canvas, OnePixelBelowTheTopDoesNot) {
  Extend(0, -19);
  ExpectCanvas(80, 100);
}

TEST_F(Canvas, TouchingTheBottomGrowsIt) {
  Extend(0, 20);
  ExpectCanvas(120, 100);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(25, 20));
  ExpectBox(stitcher.m_contentRect, 25, 20, 75, 60);
}

TEST_F(Canvas, OnePixelAboveTheBottomDoesNot) {
  Extend(0, 19);
  ExpectCanvas(80, 100);
}

TEST_F(Canvas, BeyondTheTopGrowsTheTopAlone) {
  Extend(0, -21);
  ExpectCanvas(120, 100);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(25, 60));
  ExpectBox(stitcher.m_contentRect, 25, 60, 75, 100);
}

TEST_F(Canvas, BeyondTheLeftGrowsTheLeftAlone) {
  Extend(-26, 0);
  ExpectCanvas(80, 150);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(75, 20));
  ExpectBox(stitcher.m_contentRect, 75, 20, 125, 60);
}

TEST_F(Canvas, TouchingTheLeftGrowsItAndThenTheRight) {
  Extend(-25, 0);
  ExpectCanvas(80, 200);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(75, 20));
  ExpectBox(stitcher.m_contentRect, 75, 20, 125, 60);
}

TEST_F(Canvas, TouchingTheRightGrowsIt) {
  Extend(25, 0);
  ExpectCanvas(80, 150);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(25, 20));
}

TEST_F(Canvas, TopLeft) {
  Extend(-30, -30);
  ExpectCanvas(120, 150);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(75, 60));
  ExpectBox(stitcher.m_contentRect, 75, 60, 125, 100);
}

// Grown at the top, the frame lies between top and bottom, so that the check of the
// sides runs as well and still sees the old width: the right grows twice.
TEST_F(Canvas, TopRightGrowsTheRightTwice) {
  Extend(30, -30);
  ExpectCanvas(120, 200);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(25, 60));
  ExpectBox(stitcher.m_contentRect, 25, 60, 75, 100);
}

TEST_F(Canvas, BottomLeft) {
  Extend(-30, 30);
  ExpectCanvas(120, 150);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(75, 20));
  ExpectBox(stitcher.m_contentRect, 75, 20, 125, 60);
}

TEST_F(Canvas, BottomRight) {
  Extend(30, 30);
  ExpectCanvas(120, 150);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(25, 20));
}

// The bottom is tested with the position that growth at the top has moved, and the
// height from before the call: 20 - 30 + 40 (moved) + 40 reaches 70, short of 80,
// and a frame of 60 rows reaches it.
TEST_F(Canvas, ATallFrameGrowsTopAndBottomAtOnce) {
  cv::Mat tall(60, 50, CV_8UC3);
  stitcher.m_frameOffset = cv::Point(0, -30);
  stitcher.extendResultMat(&tall);
  ExpectCanvas(160, 100);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(25, 60));
}

// The right is tested with the position that growth on the left has moved, and the
// width from before the call: 25 - 30 + 50 (moved) + 60 reaches 105.
TEST_F(Canvas, AWideFrameGrowsLeftAndRightAtOnce) {
  cv::Mat wide(40, 60, CV_8UC3);
  stitcher.m_frameOffset = cv::Point(-30, 0);
  stitcher.extendResultMat(&wide);
  ExpectCanvas(80, 200);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(75, 20));
  ExpectBox(stitcher.m_contentRect, 75, 20, 125, 60);
}

TEST_F(Canvas, ThePositionIsNotAdvancedByTheOffset) {
  Extend(10, 10);
  EXPECT_EQ(stitcher.m_framePos, cv::Point(25, 20));
  EXPECT_EQ(stitcher.m_frameOffset, cv::Point(10, 10));
}

TEST_F(Canvas, TheStepIsTheFirstFramesSize) {
  cv::Mat small(10, 10, CV_8UC3);
  stitcher.m_frameOffset = cv::Point(0, -20);
  stitcher.extendResultMat(&small);
  ExpectCanvas(120, 100);
}

namespace {

struct CutRow {
  const char* name;
  int x, cols;
  int x1, x2;  // of a box from 100 to 200
};

void PrintTo(const CutRow& row, std::ostream* out) {
  *out << row.name;
}

class CutPoint : public ::testing::TestWithParam<CutRow> {};

}  // namespace

// The rule is the same along both axes; the other axis lies on the box.
TEST_P(CutPoint, Horizontal) {
  const CutRow& row = GetParam();
  JQImageStitching stitcher;
  stitcher.m_contentRect = Box(100, 10, 200, 20);
  stitcher.m_framePos = cv::Point(row.x, 10);
  cv::Mat frame(10, row.cols, CV_8UC1);
  stitcher.findCutPoint(&frame);
  ExpectBox(stitcher.m_cutRect, row.x1, 10, row.x2, 20);
  ExpectBox(stitcher.m_contentRect, row.x1, 10, row.x2, 20);
}

TEST_P(CutPoint, Vertical) {
  const CutRow& row = GetParam();
  JQImageStitching stitcher;
  stitcher.m_contentRect = Box(10, 100, 20, 200);
  stitcher.m_framePos = cv::Point(10, row.x);
  cv::Mat frame(row.cols, 10, CV_8UC1);
  stitcher.findCutPoint(&frame);
  ExpectBox(stitcher.m_cutRect, 10, row.x1, 20, row.x2);
  ExpectBox(stitcher.m_contentRect, 10, row.x1, 20, row.x2);
}

INSTANTIATE_TEST_SUITE_P(Rows, CutPoint,
                         ::testing::Values(CutRow{"ExactlyOnTheBox", 100, 100, 100, 200},
                                           CutRow{"StartsOnTheBoxAndEndsBeyond", 100, 150, 100,
                                                  200},
                                           CutRow{"MovedLow", 60, 100, 60, 200},
                                           CutRow{"MovedLowEndingOnTheBox", 60, 140, 100, 200},
                                           CutRow{"MovedLowEndingOneBefore", 60, 139, 60, 200},
                                           CutRow{"MovedHigh", 140, 100, 100, 240},
                                           CutRow{"MovedHighEndingOnTheBox", 140, 60, 100, 200},
                                           CutRow{"MovedHighWithin", 140, 30, 100, 200},
                                           CutRow{"OutOnBothSides", 60, 200, 100, 200},
                                           CutRow{"ApartOnTheLowSide", 10, 20, 10, 200},
                                           CutRow{"ApartOnTheHighSide", 300, 20, 100, 320}),
                         [](const auto& row) { return row.param.name; });

TEST(Background, NoPictureIsFalse) {
  JQImageStitching stitcher;
  EXPECT_FALSE(stitcher.ChangeStitchingBackground(1, 2, 3));
  EXPECT_FALSE(stitcher.ChangeStitchingBackground(0, 0, 0));
}

namespace {

cv::Mat WithBlack() {
  cv::Mat picture(2, 3, CV_8UC3, cv::Scalar::all(50));
  picture.at<cv::Vec3b>(0, 0) = cv::Vec3b(0, 0, 0);
  picture.at<cv::Vec3b>(0, 2) = cv::Vec3b(0, 0, 1);
  picture.at<cv::Vec3b>(1, 1) = cv::Vec3b(0, 7, 0);
  picture.at<cv::Vec3b>(1, 2) = cv::Vec3b(0, 0, 0);
  return picture;
}

}  // namespace

TEST(Background, BlackIsLeftAlone) {
  JQImageStitching stitcher;
  inside::CurFrame(stitcher) = WithBlack();
  EXPECT_TRUE(stitcher.ChangeStitchingBackground(0, 0, 0));
  EXPECT_TRUE(SameMatrix(inside::CurFrame(stitcher), WithBlack()));
}

TEST(Background, WhiteReplacesPureBlackOnly) {
  JQImageStitching stitcher;
  inside::CurFrame(stitcher) = WithBlack();
  EXPECT_TRUE(stitcher.ChangeStitchingBackground(255, 255, 255));
  cv::Mat expected = WithBlack();
  expected.at<cv::Vec3b>(0, 0) = cv::Vec3b::all(255);
  expected.at<cv::Vec3b>(1, 2) = cv::Vec3b::all(255);
  EXPECT_TRUE(SameMatrix(inside::CurFrame(stitcher), expected));
  EXPECT_EQ(inside::CurFrame(stitcher).at<cv::Vec3b>(0, 2), cv::Vec3b(0, 0, 1));
}

TEST(Background, ColourIsBlueGreenRed) {
  JQImageStitching stitcher;
  inside::CurFrame(stitcher) = WithBlack();
  EXPECT_TRUE(stitcher.ChangeStitchingBackground(10, 20, 30));
  EXPECT_EQ(inside::CurFrame(stitcher).at<cv::Vec3b>(1, 2), cv::Vec3b(10, 20, 30));
}

TEST(Background, ValuesAreCutToEightBits) {
  JQImageStitching stitcher;
  inside::CurFrame(stitcher) = WithBlack();
  EXPECT_TRUE(stitcher.ChangeStitchingBackground(300, 0, 0));
  EXPECT_EQ(inside::CurFrame(stitcher).at<cv::Vec3b>(0, 0), cv::Vec3b(44, 0, 0));
  inside::CurFrame(stitcher) = WithBlack();
  EXPECT_TRUE(stitcher.ChangeStitchingBackground(-1, 256, 513));
  EXPECT_EQ(inside::CurFrame(stitcher).at<cv::Vec3b>(0, 0), cv::Vec3b(255, 0, 1));
}

// Each row starts at its own step: the bytes between the rows of a view stay.
TEST(Background, WalksRowsByTheirStep) {
  JQImageStitching stitcher;
  cv::Mat whole = cv::Mat::zeros(4, 5, CV_8UC3);
  inside::CurFrame(stitcher) = whole(cv::Rect(1, 1, 3, 2));
  EXPECT_TRUE(stitcher.ChangeStitchingBackground(9, 9, 9));
  cv::Mat expected = cv::Mat::zeros(4, 5, CV_8UC3);
  expected(cv::Rect(1, 1, 3, 2)).setTo(cv::Scalar::all(9));
  EXPECT_TRUE(SameMatrix(whole, expected));
}

// Three bytes a pixel whatever the type, and `cols` pixels a row: of a four-channel
// row the last quarter is not visited; a one-channel row ends before a third of it.
TEST(Background, TakesThreeBytesAPixelWhateverTheType) {
  JQImageStitching stitcher;
  inside::CurFrame(stitcher) = cv::Mat::zeros(1, 4, CV_8UC4);
  EXPECT_TRUE(stitcher.ChangeStitchingBackground(1, 2, 3));
  const unsigned char four[16] = {1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3, 0, 0, 0, 0};
  EXPECT_EQ(std::memcmp(inside::CurFrame(stitcher).data, four, 16), 0);

  inside::CurFrame(stitcher) = cv::Mat::zeros(1, 7, CV_8UC1);
  EXPECT_TRUE(stitcher.ChangeStitchingBackground(1, 2, 3));
  const unsigned char one[7] = {1, 2, 3, 1, 2, 3, 0};
  EXPECT_EQ(std::memcmp(inside::CurFrame(stitcher).data, one, 7), 0);
}

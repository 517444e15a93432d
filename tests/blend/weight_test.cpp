#include <gtest/gtest.h>

#include "support/compare.h"
#include "support/engines.h"
#include "support/outcome.h"
#include "support/pictures.h"

namespace {

template <class Engine>
class Weight : public EngineTest<Engine> {
 protected:
  cv::Mat Of(const cv::Mat& oldBlock, const cv::Mat& newFrame) {
    cv::Mat weight;
    this->engine.WeightofTwoAreaFun(oldBlock, newFrame, weight);
    EXPECT_EQ(weight.type(), CV_8UC1);
    EXPECT_EQ(weight.size(), oldBlock.size());
    return weight;
  }
};
TYPED_TEST_SUITE(Weight, Engines, EngineNames);

TYPED_TEST(Weight, BlackOldBlockWeighsNothing) {
  for (int type : {CV_8UC1, CV_8UC3}) {
    EXPECT_EQ(cv::countNonZero(
                  this->Of(pictures::Flat(30, 40, type, 0), pictures::Flat(30, 40, type, 200))),
              0);
    EXPECT_EQ(cv::countNonZero(
                  this->Of(pictures::Flat(30, 40, type, 0), pictures::Flat(30, 40, type, 0))),
              0);
  }
}

TYPED_TEST(Weight, BlackFrameLeavesAllToTheOldBlock) {
  const cv::Mat weight =
      this->Of(pictures::Flat(30, 40, CV_8UC3, 9), pictures::Flat(30, 40, CV_8UC3, 0));
  EXPECT_EQ(cv::countNonZero(weight == 255), 30 * 40);
}

// The frame's border counts as empty, the old block's does not.
TYPED_TEST(Weight, FramesOutermostPixelsBelongToTheOldBlock) {
  cv::Mat oldBlock = pictures::Flat(30, 40, CV_8UC1, 9);
  oldBlock.at<unsigned char>(15, 20) = 0;
  const cv::Mat weight = this->Of(oldBlock, pictures::Flat(30, 40, CV_8UC1, 9));
  for (int r = 0; r < 30; ++r) {
    for (int c = 0; c < 40; ++c) {
      const bool border = r == 0 || r == 29 || c == 0 || c == 39;
      EXPECT_EQ(weight.at<unsigned char>(r, c) == 255, border) << r << ' ' << c;
    }
  }
}

// 10 steps from the old block's black part, 5 from the frame's border: 2.0 and
// 1.0, two thirds of 255.
TYPED_TEST(Weight, TenStepsAgainstFiveGive170) {
  cv::Mat oldBlock = pictures::Flat(61, 80, CV_8UC1, 50);
  oldBlock.colRange(15, 80).setTo(0);
  const cv::Mat weight = this->Of(oldBlock, pictures::Flat(61, 80, CV_8UC1, 50));
  EXPECT_EQ(weight.at<unsigned char>(30, 5), 170);
}

// Without a black pixel the old block keeps the cap of 255; 5 steps inside the
// frame: 255 * 255 / 256; 10 steps: 255 * 255 / 257.
TYPED_TEST(Weight, DistanceIsCappedAt255) {
  const cv::Mat weight =
      this->Of(pictures::Flat(61, 61, CV_8UC1, 50), pictures::Flat(61, 61, CV_8UC1, 50));
  EXPECT_EQ(weight.at<unsigned char>(30, 5), 254);
  EXPECT_EQ(weight.at<unsigned char>(30, 10), 253);
  EXPECT_EQ(weight.at<unsigned char>(5, 30), 254);
  EXPECT_EQ(weight.at<unsigned char>(55, 30), 254);
  EXPECT_EQ(weight.at<unsigned char>(30, 55), 254);
}

// The cap holds for a frame's own distances too: its middle is 1299 steps, 259.8,
// from the border, so that both sides weigh the same there.
TYPED_TEST(Weight, MiddleOfAHugeFrameIsCappedToo) {
  const cv::Mat weight =
      this->Of(pictures::Flat(2600, 2600, CV_8UC1, 50), pictures::Flat(2600, 2600, CV_8UC1, 50));
  EXPECT_EQ(int{weight.at<unsigned char>(1300, 1300)}, 128);  // 127.5, to even
  EXPECT_EQ(int{weight.at<unsigned char>(1000, 1300)}, 143);  // 255 * 255 / 455 = 142.9
}

// One black pixel: a diagonal step costs 0.3, a straight one 0.2. The frame's
// distance at row 50 is 10.0.
TYPED_TEST(Weight, StepsCostTwoAndThreeTenths) {
  cv::Mat oldBlock = pictures::Flat(101, 101, CV_8UC1, 50);
  oldBlock.at<unsigned char>(50, 50) = 0;
  const cv::Mat weight = this->Of(oldBlock, pictures::Flat(101, 101, CV_8UC1, 50));
  const struct {
    int dx, dy;
    double distance;
  } rows[] = {{0, 10, 2.0},   {10, 0, 2.0},  {10, 10, 3.0},
              {-10, 10, 3.0}, {10, -4, 2.4}, {-3, -9, 2.1}};
  for (const auto& row : rows) {
    const int inside = 50 - std::max(std::abs(row.dx), std::abs(row.dy));
    const double frame = 0.2 * inside;
    const double expected = 255.0 * row.distance / (row.distance + frame);
    EXPECT_EQ(int{weight.at<unsigned char>(50 + row.dy, 50 + row.dx)},
              static_cast<int>(expected + 0.5))
        << row.dx << ", " << row.dy;
  }
  EXPECT_EQ(int{weight.at<unsigned char>(50, 50)}, 0);
}

// A single row knows no neighbours: every pixel that is not black keeps 255.
TYPED_TEST(Weight, SingleRowSkipsTheDistances) {
  cv::Mat oldBlock = pictures::Flat(1, 9, CV_8UC1, 50);
  oldBlock.at<unsigned char>(0, 4) = 0;
  const cv::Mat weight = this->Of(oldBlock, pictures::Flat(1, 9, CV_8UC1, 50));
  for (int c = 0; c < 9; ++c) EXPECT_EQ(int{weight.at<unsigned char>(0, c)}, c == 4 ? 0 : 255);
}

TYPED_TEST(Weight, SingleColumnHasNoSideNeighbours) {
  const cv::Mat weight =
      this->Of(pictures::Flat(9, 1, CV_8UC3, 50), pictures::Flat(9, 1, CV_8UC3, 50));
  EXPECT_EQ(cv::countNonZero(weight == 255), 9);
}

// The first channel weighs 0.299: 2 of it are grey 1 and so are content. The
// third weighs 0.114: 2 of it are grey 0, an empty pixel.
TYPED_TEST(Weight, ContentIsToldByTheRedGreenBlueCode) {
  const cv::Mat black = pictures::Flat(8, 8, CV_8UC3, 0);
  EXPECT_EQ(cv::countNonZero(this->Of(cv::Mat(8, 8, CV_8UC3, cv::Scalar(2, 0, 0)), black)), 64);
  EXPECT_EQ(cv::countNonZero(this->Of(cv::Mat(8, 8, CV_8UC3, cv::Scalar(0, 0, 2)), black)), 0);
}

TYPED_TEST(Weight, InputsKeepTheirPixels) {
  RandomSource random(3);
  for (int type : {CV_8UC1, CV_8UC3}) {
    const cv::Mat oldBlock = pictures::Texture(random, 30, 40, type);
    const cv::Mat newFrame = pictures::Texture(random, 30, 40, type);
    const cv::Mat before[2] = {oldBlock.clone(), newFrame.clone()};
    this->Of(oldBlock, newFrame);
    EXPECT_TRUE(SameMatrix(oldBlock, before[0]));
    EXPECT_TRUE(SameMatrix(newFrame, before[1]));
  }
}

TYPED_TEST(Weight, PicturesThatDoNotFitRaise) {
  const cv::Mat good = pictures::Flat(8, 9, CV_8UC3, 1);
  const cv::Mat others[] = {pictures::Flat(9, 8, CV_8UC3, 1), pictures::Flat(8, 9, CV_8UC1, 1),
                            cv::Mat(8, 9, CV_16UC3, cv::Scalar::all(1)), cv::Mat()};
  cv::Mat weight(1, 1, CV_8UC1, cv::Scalar(77));
  for (const cv::Mat& other : others) {
    EXPECT_EQ(Ending([&] { this->engine.WeightofTwoAreaFun(good, other, weight); }),
              Outcome::kImageLibraryError);
    EXPECT_EQ(Ending([&] { this->engine.WeightofTwoAreaFun(other, good, weight); }),
              Outcome::kImageLibraryError);
  }
  for (int type : {CV_8UC2, CV_8UC4, CV_16UC1, CV_32FC3, CV_8SC1}) {
    const cv::Mat both(8, 9, type, cv::Scalar::all(1));
    EXPECT_EQ(Ending([&] { this->engine.WeightofTwoAreaFun(both, both, weight); }),
              Outcome::kImageLibraryError)
        << type;
  }
  EXPECT_EQ(weight.size(), cv::Size(1, 1));
}

}  // namespace

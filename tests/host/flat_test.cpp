// Flat field and dark frame on a few samples that can be worked out by hand.
#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>

#include "host/flat/flat_estimate.h"
#include "host/flat/flat_field.h"
#include "jqstitch/run_program.h"

namespace jqhost_test {
namespace {

using jqhost::FlatEstimate;
using jqhost::FlatField;

class Flat : public testing::Test {
 protected:
  std::string Write(const std::string& name, const cv::Mat& picture) const {
    EXPECT_TRUE(cv::imwrite(m_folder / name, picture));
    return m_folder / name;
  }

  jqstitch_test::TemporaryFolder m_folder;
};

template <typename Sample>
std::vector<int> Samples(const cv::Mat& row) {
  return std::vector<int>(row.ptr<Sample>(0), row.ptr<Sample>(0) + row.cols * row.channels());
}

TEST_F(Flat, GainsAreTheMeanOverTheLightRoundedHalfUp) {
  // Light 100, 100, 50, 150: gains 1, 1, 2, 2/3.
  const std::string flat = Write("flat.png", (cv::Mat_<uchar>(1, 4) << 110, 110, 60, 160));
  const std::string dark = Write("dark.png", (cv::Mat_<uchar>(1, 4) << 10, 10, 10, 10));
  FlatField field(flat, dark);
  const cv::Mat frame = (cv::Mat_<uchar>(1, 4) << 91, 5, 90, 92);
  // 82 * 2/3 is 54.67; what is darker than the dark frame is black.
  EXPECT_EQ(Samples<uchar>(field.Correct(frame, 8)), (std::vector<int>{81, 0, 160, 55}));
  EXPECT_EQ(field.UnknownPixels(), 0);
}

TEST_F(Flat, EveryChannelHasItsOwnMean) {
  cv::Mat light(1, 2, CV_8UC3, cv::Scalar(100, 200, 40));
  light.at<cv::Vec3b>(0, 1) = cv::Vec3b(100, 100, 120);
  FlatField field(Write("flat.png", light), "");
  // Gains: 1 and 1; 0.75 and 1.5; 2 and 2/3.
  const cv::Mat corrected = field.Correct(cv::Mat(1, 2, CV_8UC3, cv::Scalar(60, 60, 60)), 8);
  EXPECT_EQ(Samples<uchar>(corrected), (std::vector<int>{60, 45, 120, 60, 90, 40}));
}

TEST_F(Flat, OnlyWhatIsNearlyBlackIsUnknown) {
  // Mean 1000: 15 is below a fiftieth of it and left alone, 25 is not: 40 times.
  const std::string flat = Write("flat.tif", (cv::Mat_<ushort>(1, 4) << 15, 25, 1960, 2000));
  FlatField field(flat, "");
  const cv::Mat corrected = field.Correct((cv::Mat_<ushort>(1, 4) << 7, 7, 1960, 2000), 12);
  EXPECT_EQ(Samples<ushort>(corrected), (std::vector<int>{7, 280, 1000, 1000}));
  EXPECT_EQ(field.UnknownPixels(), 1);
}

TEST_F(Flat, FieldsOfEightBitsFollowTheBitsOfTheFrames) {
  // Dark 10 of 8 bits is 40 of 10 bits and 160 of 12; light is the same everywhere.
  FlatField field(Write("flat.png", (cv::Mat_<uchar>(1, 2) << 100, 100)),
                  Write("dark.png", (cv::Mat_<uchar>(1, 2) << 10, 10)));
  const cv::Mat frame = (cv::Mat_<ushort>(1, 2) << 500, 1000);
  EXPECT_EQ(Samples<ushort>(field.Correct(frame, 12)), (std::vector<int>{340, 840}));
  EXPECT_EQ(Samples<ushort>(field.Correct(frame, 10)), (std::vector<int>{460, 960}));
  // Nothing becomes brighter than the bits can tell.
  EXPECT_EQ(Samples<ushort>(field.Correct((cv::Mat_<ushort>(1, 2) << 500, 4000), 10)),
            (std::vector<int>{460, 1023}));
}

TEST_F(Flat, AColouredFieldIsAveragedForGreyFrames) {
  cv::Mat light(1, 2, CV_8UC3, cv::Scalar(30, 60, 90));  // 60
  light.at<cv::Vec3b>(0, 1) = cv::Vec3b(240, 180, 120);  // 180: the mean is 120
  FlatField field(Write("flat.png", light), "");
  const cv::Mat frame = (cv::Mat_<uchar>(1, 2) << 50, 90);
  EXPECT_EQ(Samples<uchar>(field.Correct(frame, 8)), (std::vector<int>{100, 60}));
}

TEST(FlatEstimate, FewOddFramesDoNotMoveIt) {
  FlatEstimate estimate{cv::Mat()};
  cv::Mat odd(64, 96, CV_8UC1, cv::Scalar(100));
  odd(cv::Rect(0, 0, 30, 20)).setTo(250);
  EXPECT_EQ(estimate.Add(odd), "");
  for (int i = 0; i < 7; ++i) EXPECT_EQ(estimate.Add(cv::Mat(64, 96, CV_8UC1, cv::Scalar(90))), "");
  double least = 0, most = 0;
  cv::minMaxLoc(estimate.Result(), &least, &most);
  EXPECT_LE(most - least, 1.0) << least << " to " << most;
}

TEST(FlatEstimate, TheDarkFrameIsInTheResultAsACameraWouldTakeIt) {
  FlatEstimate estimate(cv::Mat(48, 64, CV_8UC1, cv::Scalar(20)));
  EXPECT_EQ(estimate.Add(cv::Mat(48, 64, CV_8UC1, cv::Scalar(100))), "");
  EXPECT_NEAR(cv::mean(estimate.Result())[0], 256.0 * 100, 1.0);
  EXPECT_EQ(estimate.Add(cv::Mat(48, 64, CV_8UC1, cv::Scalar(20))), "it is black");
  EXPECT_EQ(estimate.Count(), 1);
}

// A step is no parabola, which comes to 85 a quarter of the way in; what it leaves is added.
TEST(FlatEstimate, WhatTheParabolaLeavesIsAdded) {
  cv::Mat step(64, 96, CV_8UC1, cv::Scalar(80));
  step.colRange(48, 96).setTo(120);
  FlatEstimate estimate{cv::Mat()};
  EXPECT_EQ(estimate.Add(step), "");
  EXPECT_NEAR(estimate.Result().at<ushort>(32, 24) / 256.0, 80.0, 3.0);
}

}  // namespace
}  // namespace jqhost_test

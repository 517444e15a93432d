#include "work/reckoning.h"

#include <gtest/gtest.h>

#include "host/simulate/slide.h"

namespace jqscope {
namespace {

TEST(ReckoningTest, TellsTheCamerasMovement) {
  const cv::Mat slide = jqhost::PaintSlide(cv::Size(900, 700), 3);
  Reckoning reckoning;
  cv::Point at(200, 200);
  EXPECT_EQ(reckoning.Step(slide(cv::Rect(at, cv::Size(320, 240)))), cv::Point2d());
  for (const cv::Point step : {cv::Point(30, 0), cv::Point(-12, 24), cv::Point(0, -40)}) {
    at += step;
    const cv::Point2d found = reckoning.Step(slide(cv::Rect(at, cv::Size(320, 240))));
    EXPECT_NEAR(found.x, step.x, 4);
    EXPECT_NEAR(found.y, step.y, 4);
  }
}

TEST(ReckoningTest, ClaimsNothingWhereFramesHaveNothingInCommon) {
  const cv::Mat slide = jqhost::PaintSlide(cv::Size(1600, 300), 3);
  Reckoning reckoning;
  reckoning.Step(slide(cv::Rect(0, 0, 320, 240)));
  EXPECT_EQ(reckoning.Step(slide(cv::Rect(1200, 0, 320, 240))), cv::Point2d());
}

TEST(ReckoningTest, TakesFramesOfAnySize) {
  Reckoning reckoning;
  for (const cv::Size size :
       {cv::Size(1, 1), cv::Size(3, 900), cv::Size(900, 3), cv::Size(20, 20)}) {
    for (const int type : {CV_8UC1, CV_8UC3, CV_8UC4}) {
      reckoning.Step(cv::Mat(size, type, cv::Scalar::all(90)));
      EXPECT_EQ(reckoning.Step(cv::Mat(size, type, cv::Scalar::all(90))), cv::Point2d());
    }
  }
}

}  // namespace
}  // namespace jqscope

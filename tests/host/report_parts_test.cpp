// What the report computes by itself: seams from places, appearance from pixels.
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include "host/record/seams.h"
#include "host/verdict/appearance.h"

namespace jqhost_test {
namespace {

jqhost::FrameResult PlacedAt(cv::Point place) {
  jqhost::FrameResult frame;
  frame.cause = jqhost::Cause::kPlaced;
  frame.position = place;
  return frame;
}

TEST(Seams, OfTwoFramesSideBySideRunThroughTheMiddleOfTheirOverlap) {
  // Frames of 100 x 400 at 0 and 60: both show columns 60 to 99. Far from the upper and
  // lower border, column c lies 100 - c from the first column that the old frame leaves
  // empty, and c - 59 from the new frame's border: from column 80 on the new one is more.
  jqhost::RunRecord record;
  record.workingSize = cv::Size(100, 400);
  record.pictureSize = cv::Size(160, 400);
  record.frames = {PlacedAt({0, 0}), PlacedAt({60, 0})};
  const std::string path = jqhost::SeamPath(record);
  EXPECT_NE(path.find("M80 "), std::string::npos) << path;
}

TEST(Seams, NoneWithoutAnOverlap) {
  jqhost::RunRecord record;
  record.workingSize = cv::Size(30, 30);
  record.pictureSize = cv::Size(100, 30);
  record.frames = {PlacedAt({0, 0}), PlacedAt({70, 0})};
  EXPECT_EQ(jqhost::SeamPath(record), "");
  record.pictureSize = cv::Size();
  EXPECT_EQ(jqhost::SeamPath(record), "");
}

TEST(Appearance, TellsExposureAndFocusApart) {
  constexpr int kSeed = 11;
  cv::RNG random(kSeed);
  cv::Mat picture(200, 300, CV_8UC3);
  random.fill(picture, cv::RNG::UNIFORM, 60, 120);
  cv::GaussianBlur(picture, picture, {}, 1.0);
  const jqhost::Appearance same = jqhost::CompareAppearance(picture, picture);
  EXPECT_DOUBLE_EQ(same.brightness, 1.0);
  EXPECT_DOUBLE_EQ(same.sharpness, 1.0);
  const jqhost::Appearance bright = jqhost::CompareAppearance(picture, picture * 2.0);
  EXPECT_NEAR(bright.brightness, 2.0, 0.02);
  EXPECT_NEAR(bright.sharpness, 1.0, 0.15);
  cv::Mat blurred;
  cv::GaussianBlur(picture, blurred, {}, 2.0);
  const jqhost::Appearance soft = jqhost::CompareAppearance(picture, blurred);
  EXPECT_NEAR(soft.brightness, 1.0, 0.02);
  EXPECT_LT(soft.sharpness, 0.6);
}

}  // namespace
}  // namespace jqhost_test

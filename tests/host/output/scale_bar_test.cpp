// A bar of a round length, where it is said to be, and nothing else touched.
#include "host/output/scale_bar.h"

#include <gtest/gtest.h>

namespace jqhost_test {
namespace {

TEST(ScaleBar, LengthsAreRoundAndAtMostAFifth) {
  struct Row {
    int width;
    double pixel;  // metres
    double metres;
    int length;  // pixels, rounded
    const char* text;
  };
  // 1000 x 0.345 um = 345 um, a fifth is 69 um: 50 um are 144.9 pixels. 1000 x 1 mm: a
  // fifth is 0.2 m, itself a round length. 2000 x 2.5 nm = 5 um, a fifth 1 um: 400 pixels.
  const Row rows[] = {{1000, 0.345e-6, 50e-6, 145, "50 um"},
                      {1000, 1e-3, 0.2, 200, "200 mm"},
                      {2000, 2.5e-9, 1e-6, 400, "1 um"},
                      {30000, 1e-6, 5e-3, 5000, "5 mm"}};
  for (const Row& row : rows) {
    const auto bar = jqhost::PlanScaleBar({row.width, 800}, row.pixel);
    ASSERT_TRUE(bar) << row.text;
    EXPECT_NEAR(bar->metres, row.metres, 1e-9 * row.metres) << row.text;
    EXPECT_EQ(bar->bar.width, row.length) << row.text;
    EXPECT_EQ(bar->text, row.text);
    EXPECT_EQ(bar->place & cv::Rect(0, 0, row.width, 800), bar->place) << row.text;
    EXPECT_EQ(bar->bar & bar->place, bar->bar) << row.text;
    EXPECT_GT(bar->place.x, row.width / 2) << row.text;
    EXPECT_GT(bar->place.y, 400) << row.text;
  }
  EXPECT_FALSE(jqhost::PlanScaleBar({40, 800}, 1e-6)) << "too narrow";
  EXPECT_FALSE(jqhost::PlanScaleBar({1000, 12}, 1e-6)) << "too low";
}

TEST(ScaleBar, IsWhiteInABlackRim) {
  const auto bar = jqhost::PlanScaleBar({1000, 800}, 1e-6);
  ASSERT_TRUE(bar);
  cv::Mat pixels(bar->place.size(), CV_8UC1, cv::Scalar(99));
  jqhost::DrawScaleBar(*bar, pixels);
  const cv::Rect inside = bar->bar - bar->place.tl();
  EXPECT_EQ(cv::countNonZero(pixels(inside) == 255), inside.area());
  for (const int column : {inside.x - 1, inside.br().x}) {
    EXPECT_EQ(pixels.at<unsigned char>(inside.y, column), 0) << column;
  }
  // The letters lie above the bar.
  const cv::Mat above = pixels.rowRange(0, inside.y - bar->rim);
  EXPECT_GT(cv::countNonZero(above > 180), 20);
}

TEST(ScaleBar, LengthsAreToldInTheirUnit) {
  EXPECT_EQ(jqhost::LengthText(0.345e-6), "345 nm");
  EXPECT_EQ(jqhost::LengthText(6.5e-6), "6.5 um");
  EXPECT_EQ(jqhost::LengthText(1e-3), "1 mm");
  EXPECT_EQ(jqhost::LengthText(2.0), "2 m");
  EXPECT_EQ(jqhost::LengthText(0.5e-9), "0.5 nm");
}

}  // namespace
}  // namespace jqhost_test

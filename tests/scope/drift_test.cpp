#include "work/drift.h"

#include <gtest/gtest.h>

#include "host/simulate/slide.h"

namespace jqscope {
namespace {

constexpr int kWidth = 320, kHeight = 240;

TEST(DriftTest, TellsHowFarAFrameLiesFromOlderGround) {
  const cv::Mat slide = jqhost::PaintSlide(cv::Size(900, 700), 11);
  const cv::Rect last(200, 200, kWidth, kHeight);
  for (const cv::Point drift : {cv::Point(0, 0), cv::Point(6, 0), cv::Point(-5, 7)}) {
    // The frame shows what lies at its place less the drift.
    const cv::Point place(300, 260);
    const cv::Mat frame = slide(cv::Rect(place - drift, cv::Size(kWidth, kHeight)));
    const auto found = MeasureDrift(slide, frame, place, last);
    ASSERT_TRUE(found.has_value());
    EXPECT_NEAR(std::abs(found->x), std::abs(drift.x), 0.6);
    EXPECT_NEAR(std::abs(found->y), std::abs(drift.y), 0.6);
  }
}

TEST(DriftTest, TellsNothingOverNewOrUnknownGround) {
  cv::Mat slide = jqhost::PaintSlide(cv::Size(900, 700), 11);
  const cv::Mat frame = slide(cv::Rect(300, 260, kWidth, kHeight)).clone();
  const cv::Rect last(200, 200, kWidth, kHeight);
  const cv::Mat other = jqhost::PaintSlide(cv::Size(kWidth, kHeight), 99);
  EXPECT_FALSE(MeasureDrift(slide, other, cv::Point(300, 260), last).has_value());
  EXPECT_FALSE(MeasureDrift(slide, frame, cv::Point(220, 210), last).has_value());  // thin strips
  EXPECT_FALSE(MeasureDrift(slide, frame, cv::Point(700, 600), last).has_value());  // half outside
  slide(cv::Rect(521, 0, 379, 700)).setTo(0);
  EXPECT_FALSE(MeasureDrift(slide, frame, cv::Point(300, 240), last).has_value());  // not covered
}

}  // namespace
}  // namespace jqscope

#include <gtest/gtest.h>

#include "console/progress_bar.h"

namespace jqstitch_test {
namespace {

TEST(Progress, TellsCountRateAndTimeLeft) {
  using jqstitch::ProgressText;
  EXPECT_EQ(ProgressText(0, 60, "frames", 0), "0/60 frames");
  EXPECT_EQ(ProgressText(12, 60, "frames", 4), "12/60 frames, 3.0 frames/s, 0:16 left");
  EXPECT_EQ(ProgressText(10, 1210, "frames", 1), "10/1210 frames, 10.0 frames/s, 2:00 left");
  EXPECT_EQ(ProgressText(60, 60, "frames", 20), "60/60 frames, 3.0 frames/s");
  EXPECT_EQ(ProgressText(12, 0, "frames", 4), "12 frames, 3.0 frames/s");
}

}  // namespace
}  // namespace jqstitch_test

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

#include "flat_run.h"

// Frames of 100 columns and 50 rows: 10 % and 90 % are 10 and 90 of the columns,
// 5 and 45 of the rows.

namespace {

struct Row {
  const char* name;
  int offsetX, offsetY, matchCount;
  bool accepted;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name;
}

class Acceptance : public ::testing::TestWithParam<Row> {};

}  // namespace

TEST_P(Acceptance, OfALiveFrame) {
  const Row& row = GetParam();
  FlatRun run(cv::Size(100, 50));
  run.Take(0, 0, 0);
  run.Take(row.offsetX, row.offsetY, row.matchCount);
  EXPECT_EQ(run.stitcher.GetStitchFlags().overlapFlag, 1);
  EXPECT_EQ(run.stitcher.IsLastFrameAccepted(), row.accepted);
  EXPECT_EQ(inside::LastFrameAccepted(run.stitcher), row.accepted);
  EXPECT_EQ(run.stitcher.GetFrameCount(), row.accepted ? 2 : 1);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Acceptance,
    ::testing::Values(Row{"ColumnsExactlyTenPercent", 10, 0, 11, false},
                      Row{"ColumnsJustMoreThanTenPercent", 11, 0, 11, true},
                      Row{"ColumnsExactlyNinetyPercent", 90, 0, 11, false},
                      Row{"ColumnsJustLessThanNinetyPercent", 89, 0, 11, true},
                      Row{"ColumnsExactlyTenPercentLeft", -10, 0, 11, false},
                      Row{"ColumnsJustMoreThanTenPercentLeft", -11, 0, 11, true},
                      Row{"ColumnsExactlyNinetyPercentLeft", -90, 0, 11, false},
                      Row{"ColumnsJustLessThanNinetyPercentLeft", -89, 0, 11, true},
                      Row{"RowsExactlyTenPercent", 0, 5, 11, false},
                      Row{"RowsJustMoreThanTenPercent", 0, 6, 11, true},
                      Row{"RowsExactlyNinetyPercent", 0, 45, 11, false},
                      Row{"RowsJustLessThanNinetyPercent", 0, 44, 11, true},
                      Row{"RowsExactlyTenPercentUp", 0, -5, 11, false},
                      Row{"RowsJustMoreThanTenPercentUp", 0, -6, 11, true},
                      Row{"RowsExactlyNinetyPercentUp", 0, -45, 11, false},
                      Row{"RowsJustLessThanNinetyPercentUp", 0, -44, 11, true},
                      // Against the columns the first of these would be too short a shift, and
                      // the second short enough.
                      Row{"TieIsMeasuredAgainstTheRows", 8, -8, 11, true},
                      Row{"TieTooFarForTheRows", 46, 46, 11, false},
                      Row{"DominantAxisCountsAlone", 20, 19, 11, true},
                      Row{"RowsDominateByOne", 7, 8, 11, true},
                      Row{"ColumnsDominateByOne", 8, 7, 11, false},
                      Row{"TenMatches", 30, 0, 10, false}, Row{"ElevenMatches", 30, 0, 11, true},
                      Row{"NoMatches", 30, 0, 0, false}, Row{"NoShift", 0, 0, 500, false}),
    [](const auto& row) { return row.param.name; });

TEST(AcceptanceBounds, ANaNFails) {
  FlatRun run(cv::Size(100, 50));
  run.Take(0, 0, 0);
  inside::MaxOverlap(run.stitcher) = std::numeric_limits<float>::quiet_NaN();
  run.Take(30, 0);
  EXPECT_FALSE(run.stitcher.IsLastFrameAccepted());
}

TEST(AcceptanceBounds, AreTheMembers) {
  FlatRun run(cv::Size(100, 50));
  run.Take(0, 0, 0);
  inside::MaxOverlap(run.stitcher) = 0.5f;
  run.Take(50, 0);
  EXPECT_FALSE(run.stitcher.IsLastFrameAccepted());
  run.Take(51, 0);
  EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
}

// The shift is measured in the working scale, the frame in camera pixels: at level
// 2 a shift of 10 working pixels of a 100-pixel frame is 10 %.
TEST(AcceptanceBounds, AtLevelTwoTheExtentIsTheCameraFrames) {
  FlatRun run(cv::Size(100, 50), 2);
  run.Take(0, 0, 0);
  run.Take(10, 0);
  EXPECT_FALSE(run.stitcher.IsLastFrameAccepted());
  run.Take(11, 0);
  EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_EQ(run.stitcher.GetPlacedBounds().size(), cv::Size(61, 25));
}

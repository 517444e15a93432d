// The rule alone: which reason is given, and which numbers, for a record and what was
// measured beside it. Frames of 100 columns and 50 rows.

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <ostream>

#include "stitcher/acceptance.h"

namespace {

using jqstitching::FrameMeasures;
using jqstitching::JudgeFrame;

struct Row {
  const char* name;
  bool frameCorners, referenceCorners;
  int overlapFlag, matchCount, offsetX, offsetY;
  JQFrameCause cause;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name;
}

JQFrameVerdict Judge(const Row& row) {
  FrameMeasures measures;
  measures.corners.first = row.referenceCorners;
  measures.corners.second = row.frameCorners;
  measures.corners.matched = 40;
  stitchflags record;
  record.overlapFlag = row.overlapFlag;
  record.matchCount = row.matchCount;
  record.offsetX = row.offsetX;
  record.offsetY = row.offsetY;
  return JudgeFrame(record, measures, cv::Size(100, 50), {0.1f, 0.9f});
}

class Rule : public ::testing::TestWithParam<Row> {};

}  // namespace

TEST_P(Rule, GivesTheFirstReason) {
  const Row& row = GetParam();
  const JQFrameVerdict verdict = Judge(row);
  EXPECT_EQ(verdict.cause, row.cause);
  const bool registered = row.frameCorners && row.referenceCorners;
  EXPECT_EQ(verdict.registered, registered);
  EXPECT_EQ(verdict.matchCount, registered ? row.matchCount : 0);
  EXPECT_EQ(verdict.pairCount, registered ? 40 : 0);
  EXPECT_EQ(verdict.offset, registered ? cv::Point(row.offsetX, row.offsetY) : cv::Point());
  EXPECT_EQ(std::isnan(verdict.shiftShare), !registered);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Rule,
    ::testing::Values(
        Row{"Placed", true, true, 1, 11, 30, 0, JQFrameCause::kPlaced},
        // A batch run keeps the offset of the frame before.
        Row{"PlacedByOlderNumbers", false, true, 1, 11, 30, 0, JQFrameCause::kPlaced},
        Row{"NeitherHasCorners", false, false, 0, 0, 0, 0, JQFrameCause::kNoCornersInFrame},
        Row{"FrameWithout", false, true, 1, 0, 0, 0, JQFrameCause::kNoCornersInFrame},
        Row{"ReferenceWithout", true, false, 1, 0, 0, 0, JQFrameCause::kNoCornersInReference},
        Row{"CornersBeforeTheTest", true, false, 0, 5, 1, 0, JQFrameCause::kNoCornersInReference},
        Row{"TestFailed", true, true, 0, 11, 30, 0, JQFrameCause::kOverlapTestFailed},
        Row{"TestBeforeMatches", true, true, 0, 10, 5, 0, JQFrameCause::kOverlapTestFailed},
        Row{"AnyOtherFlagFails", true, true, 2, 11, 30, 0, JQFrameCause::kOverlapTestFailed},
        Row{"TenMatches", true, true, 1, 10, 30, 0, JQFrameCause::kTooFewMatches},
        Row{"MatchesBeforeShift", true, true, 1, 10, 5, 0, JQFrameCause::kTooFewMatches},
        Row{"TenPercent", true, true, 1, 11, 10, 0, JQFrameCause::kShiftTooSmall},
        Row{"NinetyPercent", true, true, 1, 11, -90, 0, JQFrameCause::kShiftTooLarge},
        Row{"RowsTenPercent", true, true, 1, 11, 0, -5, JQFrameCause::kShiftTooSmall},
        Row{"RowsNinetyPercent", true, true, 1, 11, 44, 45, JQFrameCause::kShiftTooLarge},
        Row{"TieAgainstTheRows", true, true, 1, 11, 46, -46, JQFrameCause::kShiftTooLarge},
        Row{"LowestInteger", true, true, 1, 11, INT_MIN, 0, JQFrameCause::kShiftTooLarge}),
    [](const auto& row) { return row.param.name; });

TEST(Rule, MeasuresTheShareAlongTheLargerComponent) {
  const auto share = [](int x, int y) {
    return Judge({"", true, true, 1, 11, x, y, JQFrameCause::kPlaced}).shiftShare;
  };
  EXPECT_FLOAT_EQ(share(-30, 20), 0.3f);
  EXPECT_FLOAT_EQ(share(20, -30), 0.6f);
  EXPECT_FLOAT_EQ(share(20, 20), 0.4f);
}

TEST(Rule, HandsOnWhatTheTestsMeasured) {
  FrameMeasures measures;
  measures.bright = 1.0f;
  measures.brightLimit = 2.0f;
  measures.definition = 3.0f;
  measures.definitionLimit = 4.0f;
  measures.motion = 5.0f;
  measures.motionLimit = 6.0f;
  const JQFrameVerdict verdict = JudgeFrame(stitchflags(), measures, cv::Size(100, 50), {});
  EXPECT_EQ(verdict.brightness, 1.0f);
  EXPECT_EQ(verdict.brightnessLimit, 2.0f);
  EXPECT_EQ(verdict.definition, 3.0f);
  EXPECT_EQ(verdict.definitionLimit, 4.0f);
  EXPECT_EQ(verdict.motion, 5.0f);
  EXPECT_EQ(verdict.motionLimit, 6.0f);
}

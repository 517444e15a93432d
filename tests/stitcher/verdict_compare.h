#ifndef JQ_TESTS_STITCHER_VERDICT_COMPARE_H
#define JQ_TESTS_STITCHER_VERDICT_COMPARE_H

#include <gtest/gtest.h>

#include <cmath>

#include "jqframeverdict.h"

/// Field by field; a number that was not measured equals another that was not.
inline void ExpectSame(const JQFrameVerdict& actual, const JQFrameVerdict& expected) {
  const auto same = [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); };
  EXPECT_EQ(actual.cause, expected.cause);
  EXPECT_EQ(actual.registered, expected.registered);
  EXPECT_EQ(actual.matchCount, expected.matchCount);
  EXPECT_EQ(actual.offset, expected.offset);
  EXPECT_PRED2(same, actual.shiftShare, expected.shiftShare);
  EXPECT_PRED2(same, actual.brightness, expected.brightness);
  EXPECT_PRED2(same, actual.brightnessLimit, expected.brightnessLimit);
  EXPECT_PRED2(same, actual.definition, expected.definition);
  EXPECT_PRED2(same, actual.definitionLimit, expected.definitionLimit);
  EXPECT_PRED2(same, actual.motion, expected.motion);
  EXPECT_PRED2(same, actual.motionLimit, expected.motionLimit);
  EXPECT_EQ(actual.pairCount, expected.pairCount);
  EXPECT_EQ(actual.mosaicBytesNeeded, expected.mosaicBytesNeeded);
}

#endif  // JQ_TESTS_STITCHER_VERDICT_COMPARE_H

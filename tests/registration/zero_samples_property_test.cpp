#include <gtest/gtest.h>

#include "support/engine_pair.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

class ZeroSamplesProperty : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(ZeroSamplesProperty);

TEST_P(ZeroSamplesProperty, EqualsTheTwin) {
  Repeat(600, [](RandomSource& random) {
    const int channels = random.Int(1, 5);
    const int cols = random.Size(200);
    const cv::Mat picture =
        pictures::Any(random, random.Size(90), cols * channels, CV_8UC1).reshape(channels);
    const GuardedMatrix one(random, picture);
    const GuardedMatrix two = one.Twin();
    EnginePair engines;
    cv::Mat outOne;
    cv::Mat outTwo;
    engines.library.JudgeImageChannel(one.View(), outOne);
    engines.twin.JudgeImageChannel(two.View(), outTwo);
    EXPECT_TRUE(SameMatrix(outOne, outTwo)) << channels << " channels";
    EXPECT_EQ(outOne.data, one.View().data);
    EXPECT_TRUE(one.GuardsIntact());
    EXPECT_TRUE(two.GuardsIntact());
  });
}

}  // namespace

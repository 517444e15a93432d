#include <gtest/gtest.h>

#include "registration/kernels/zero_samples.h"
#include "support/compare.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

class ZeroRow : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(ZeroRow);

// One channel: 1 in the first cols bytes. Others: 2 in the first 3 * cols bytes, as far
// as the row goes.
TEST_P(ZeroRow, ZerosAreLiftedInPlace) {
  Repeat(300, [](RandomSource& random) {
    const int channels = random.Int(1, 4);
    const int rowCount = random.Int(1, 3);
    const int cols = random.Size(400);
    const int high = random.OneIn(2) ? 2 : 255;
    const cv::Mat content =
        pictures::Noise(random, rowCount, cols, CV_MAKETYPE(CV_8U, channels), 0, high);
    const GuardedMatrix guarded(random, content);
    cv::Mat expected = content.clone();
    const int visited = channels == 1 ? cols : std::min(3, channels) * cols;
    for (int r = 0; r < rowCount; ++r) {
      for (int k = 0; k < visited; ++k) {
        unsigned char& sample = expected.ptr(r)[k];
        if (sample == 0) sample = channels == 1 ? 1 : 2;
      }
    }
    cv::Mat picture = guarded.View();
    jqstitching::LiftZeroSamples(picture);
    EXPECT_TRUE(SameMatrix(picture, expected));
    EXPECT_TRUE(guarded.GuardsIntact());
  });
}

}  // namespace

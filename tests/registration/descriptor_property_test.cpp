#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "support/engine_pair.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

class DescriptorProperty : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(DescriptorProperty);

TEST_P(DescriptorProperty, EqualsTheTwin) {
  Repeat(500, [](RandomSource& random) {
    const int type = random.OneIn(5) ? CV_8UC3 : CV_8UC1;
    const cv::Mat picture =
        pictures::Any(random, cv::Size{random.Size(150), random.Size(150)}, type);
    const GuardedMatrix image(random, picture);
    // Mostly near the edges, where each neighbour has its own rule.
    std::vector<cv::Point> corners(random.Int(0, 40));
    for (cv::Point& corner : corners) {
      corner.x = random.Int(-14, picture.cols + 14);
      corner.y = random.Int(-14, picture.rows + 14);
      if (random.OneIn(3)) corner.x = picture.cols - random.Int(0, 14);
      if (random.OneIn(3)) corner.y = picture.rows - random.Int(0, 14);
      if (random.OneIn(40)) corner.x = random.OneIn(2) ? 2147483647 : -2147483647;
    }
    EnginePair engines;
    cv::Mat one(3, 3, CV_8UC1);
    cv::Mat two;
    engines.library.NoRotaFeatureDescriber(image.View(), corners, one);
    engines.twin.NoRotaFeatureDescriber(image.View(), corners, two);
    EXPECT_TRUE(SameMatrix(one, two)) << picture.rows << " x " << picture.cols;
    EXPECT_TRUE(image.Untouched());
  });
}

// All 511 x 511 pairs of differences, one pixel of each seen alone: the four
// samples round a pixel are set, the corner looks at it, and its neighbours see
// the same in both.
TEST_P(DescriptorProperty, EveryGradientFallsIntoTheTwinsBin) {
  EnginePair engines;
  // 24 columns apart: no patch sees two of them.
  const int kPerRow = 73;
  // All of them at one level, every fifth row of pairs at the others.
  const int step = GetParam() == CpuLevels().back() && !RunsSlowly() ? 1 : 5;
  for (int gy = -255; gy <= 255; gy += step) {
    cv::Mat picture = cv::Mat::zeros(24 * 7, 24 * kPerRow, CV_8UC1);
    std::vector<cv::Point> corners;
    for (int k = 0; k < 511; ++k) {
      const int gx = k - 255;
      const cv::Point at(24 * (k % kPerRow) + 12, 24 * (k / kPerRow) + 12);
      picture.at<unsigned char>(at.y, at.x + (gx > 0 ? 2 : -2)) =
          static_cast<unsigned char>(std::abs(gx));
      picture.at<unsigned char>(at.y + (gy > 0 ? 2 : -2), at.x) =
          static_cast<unsigned char>(std::abs(gy));
      corners.push_back(at);
    }
    cv::Mat one;
    cv::Mat two;
    engines.library.NoRotaFeatureDescriber(picture, corners, one);
    engines.twin.NoRotaFeatureDescriber(picture, corners, two);
    ASSERT_TRUE(SameMatrix(one, two)) << "gy " << gy << ", gx = row - 255";
  }
}

}  // namespace

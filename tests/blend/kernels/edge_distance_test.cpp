#include <gtest/gtest.h>

#include <algorithm>

#include "blend/kernels/edge_distance.h"
#include "plain_chamfer.h"
#include "support/compare.h"
#include "support/random_source.h"

namespace {

void Check(int rows, int cols, jqstitching::EdgeDistance& edge) {
  cv::Mat plain(rows, cols, CV_32F, cv::Scalar(255));
  plain.row(0).setTo(0);
  plain.row(rows - 1).setTo(0);
  plain.col(0).setTo(0);
  plain.col(cols - 1).setTo(0);
  PlainChamfer(plain);
  cv::Mat closed(rows, cols, CV_32F);
  edge.prepare(rows, cols);
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < cols; ++c) {
      closed.at<float>(r, c) = std::min(edge.rowDistance(r), edge.columnDistances()[c]);
    }
  }
  ASSERT_TRUE(SameMatrix(closed, plain));
}

TEST(EdgeDistance, EqualsThePassesOnEverySmallSize) {
  jqstitching::EdgeDistance edge;
  for (int rows = 1; rows <= 24; ++rows) {
    for (int cols = 1; cols <= 24; ++cols) Check(rows, cols, edge);
  }
}

TEST(EdgeDistance, EqualsThePassesOnNarrowAndRandomSizes) {
  jqstitching::EdgeDistance edge;
  for (int narrow = 1; narrow <= 4; ++narrow) {
    Check(narrow, 700, edge);
    Check(700, narrow, edge);
  }
  const std::uint64_t seed = TestSeed();
  RecordProperty("seed", std::to_string(seed));
  SCOPED_TRACE("JQ_TEST_SEED=" + std::to_string(seed));
  RandomSource random(seed);
  for (int k = 0; k < 10; ++k) {
    const cv::Size size{random.Int(1, 400), random.Int(1, 400)};
    Check(size.height, size.width, edge);
  }
}

TEST(EdgeDistance, MeetsTheCap) {
  // 255 / 0.2 = 1275 steps from either edge.
  jqstitching::EdgeDistance edge;
  Check(2600, 2570, edge);
  EXPECT_EQ(edge.rowDistance(1300), 255.0f);
  EXPECT_EQ(edge.columnDistances()[1284], 255.0f);
}

}  // namespace

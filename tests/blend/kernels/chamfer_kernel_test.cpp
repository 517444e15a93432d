#include <gtest/gtest.h>

#include <vector>

#include "black_patterns.h"
#include "blend/kernels/distance_map.h"
#include "blend/kernels/row_layout.h"
#include "plain_chamfer.h"
#include "support/compare.h"
#include "support/property_test.h"

using jqstitching::DistanceMap;
using jqstitching::RowContent;

namespace {

class ChamferKernel : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(ChamferKernel);

// The whole map of a one-channel picture.
cv::Mat Fast(const cv::Mat& picture, DistanceMap& map) {
  cv::Mat result(picture.size(), CV_32F);
  std::vector<std::uint8_t> content(jqstitching::PaddedCols(picture.cols));
  map.prepare(picture.rows, picture.cols);
  for (int r = 0; r < picture.rows; ++r) {
    const RowContent summary =
        jqstitching::MarkContent(picture.ptr(r), 1, content.data(), picture.cols);
    map.forwardRow(r, summary, content.data());
  }
  for (int r = picture.rows - 1; r >= 0; --r) {
    const float* row = map.backwardRow(r);
    std::copy_n(row, picture.cols, result.ptr<float>(r));
    EXPECT_EQ(map.isEmptyRow(r), cv::countNonZero(picture.row(r)) == 0) << "row " << r;
  }
  return result;
}

cv::Mat Plain(const cv::Mat& picture) {
  cv::Mat map;
  cv::Mat(picture > 0).convertTo(map, CV_32F);
  PlainChamfer(map);
  return map;
}

void Check(const cv::Mat& picture, DistanceMap& map) {
  ASSERT_TRUE(SameMatrix(Fast(picture, map), Plain(picture)));
}

TEST_P(ChamferKernel, StepsAreRoundedOneByOne) {
  cv::Mat picture = pictures::Flat(3, 60, CV_8UC1, 9);
  picture.col(0).setTo(0);
  DistanceMap map;
  const cv::Mat distances = Fast(picture, map);
  float wanted = 0.0f;
  for (int c = 0; c < 59; ++c, wanted += 0.2f) EXPECT_EQ(distances.at<float>(1, c), wanted) << c;
}

TEST_P(ChamferKernel, TheLastColumnCountsItsLeftNeighbourAsDiagonal) {
  cv::Mat picture = pictures::Flat(2, 40, CV_8UC1, 9);
  picture.at<unsigned char>(1, 38) = 0;
  DistanceMap map;
  const cv::Mat distances = Fast(picture, map);
  EXPECT_EQ(distances.at<float>(1, 39), 0.3f);
  // The last row is not visited from the right.
  EXPECT_EQ(distances.at<float>(1, 37), 255.0f);
}

TEST_P(ChamferKernel, EveryPatternOfSmallPictures) {
  // All pictures of up to 12 pixels.
  DistanceMap map;
  for (int rows = 1; rows <= 4; ++rows) {
    for (int cols = 1; rows * cols <= 12; ++cols) {
      for (int bits = 0; bits < 1 << (rows * cols); ++bits) {
        cv::Mat picture(rows, cols, CV_8U);
        for (int k = 0; k < rows * cols; ++k) picture.data[k] = (bits >> k & 1) != 0 ? 255 : 0;
        Check(picture, map);
        if (HasFatalFailure()) FAIL() << rows << " rows, pattern " << bits;
      }
    }
  }
}

TEST_P(ChamferKernel, EqualsThePlainPasses) {
  DistanceMap map;  // one for all sizes: nothing of an earlier picture may show
  Repeat(250, [&map](RandomSource& random) {
    const cv::Mat picture =
        black_patterns::Picture(random, cv::Size{random.Size(300), random.Size(150)}, CV_8UC1);
    Check(picture, map);
  });
}

TEST_P(ChamferKernel, DistancesMeetTheirCap) {
  DistanceMap map;
  for (const bool tall : {false, true}) {
    cv::Mat picture = pictures::Flat(tall ? 2700 : 5, tall ? 5 : 2700, CV_8UC1, 1);
    picture.at<unsigned char>(2, 2) = 0;
    picture.at<unsigned char>(picture.rows - 3, 4) = 0;
    Check(picture, map);
    EXPECT_EQ(Fast(picture, map).at<float>(picture.rows - 1, picture.cols - 1) == 255.0f, !tall);
  }
}

}  // namespace

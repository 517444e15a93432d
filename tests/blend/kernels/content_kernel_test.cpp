#include <gtest/gtest.h>

#include <array>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "black_patterns.h"
#include "blend/kernels/content_row.h"
#include "blend/kernels/row_layout.h"
#include "support/compare.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

using jqstitching::RowContent;

namespace {

class ContentKernel : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(ContentKernel);

cv::Mat Expected(const cv::Mat& picture) {
  cv::Mat grey = picture;
  if (picture.channels() == 3) cv::cvtColor(picture, grey, cv::COLOR_RGB2GRAY);
  return grey > 0;
}

// Marks every row and compares marks and summaries with the grey conversion.
void Check(const cv::Mat& picture) {
  const cv::Mat expected = Expected(picture);
  const std::size_t padded = jqstitching::PaddedCols(picture.cols);
  for (int r = 0; r < picture.rows; ++r) {
    std::vector<std::uint8_t> marks(padded + 64, 77);
    const RowContent summary =
        jqstitching::MarkContent(picture.ptr(r), picture.channels(), marks.data(), picture.cols);
    ASSERT_TRUE(SameMatrix(cv::Mat(1, picture.cols, CV_8U, marks.data()), expected.row(r)))
        << "picture row " << r;
    for (std::size_t k = padded; k < marks.size(); ++k)
      ASSERT_EQ(marks[k], 77) << "past " << padded;
    const int filled = cv::countNonZero(expected.row(r));
    const RowContent wanted = filled == 0              ? RowContent::kEmpty
                              : filled == picture.cols ? RowContent::kFull
                                                       : RowContent::kMixed;
    ASSERT_EQ(summary, wanted) << "picture row " << r;
  }
}

TEST_P(ContentKernel, SevenColoursAreEmpty) {
  // 200 columns of one colour: the body, and one odd pixel for the exact test.
  cv::Mat row(1, 200, CV_8UC3, cv::Scalar(0, 0, 0));
  const std::array<cv::Vec3b, 7> empty = {
      cv::Vec3b(0, 0, 0), cv::Vec3b(0, 0, 1), cv::Vec3b(0, 0, 2), cv::Vec3b(0, 0, 3),
      cv::Vec3b(0, 0, 4), cv::Vec3b(1, 0, 0), cv::Vec3b(1, 0, 1)};
  std::vector<std::uint8_t> marks(jqstitching::PaddedCols(row.cols));
  for (const cv::Vec3b& colour : empty) {
    row.setTo(colour);
    EXPECT_EQ(jqstitching::MarkContent(row.ptr(), 3, marks.data(), row.cols), RowContent::kEmpty)
        << colour;
  }
  for (const cv::Vec3b& colour :
       {cv::Vec3b(0, 0, 5), cv::Vec3b(1, 0, 2), cv::Vec3b(2, 0, 0), cv::Vec3b(0, 1, 0)}) {
    row.setTo(colour);
    EXPECT_EQ(jqstitching::MarkContent(row.ptr(), 3, marks.data(), row.cols), RowContent::kFull)
        << colour;
  }
}

TEST_P(ContentKernel, EveryDarkColourAndEverySingleSample) {
  // Grey grows with each sample, so colours beyond these are not empty either.
  std::vector<cv::Vec3b> colours;
  for (int b = 0; b < 10; ++b) {
    for (int g = 0; g < 10; ++g) {
      for (int r = 0; r < 10; ++r) colours.emplace_back(b, g, r);
    }
  }
  for (int channel = 0; channel < 3; ++channel) {
    for (int value = 0; value < 256; ++value) {
      cv::Vec3b colour(0, 0, 0);
      colour[channel] = static_cast<unsigned char>(value);
      colours.push_back(colour);
    }
  }
  Check(cv::Mat(1, static_cast<int>(colours.size()), CV_8UC3, colours.data()));
}

TEST_P(ContentKernel, EqualsTheGreyConversion) {
  Repeat(300, [](RandomSource& random) {
    const int type = random.OneIn(3) ? CV_8UC1 : CV_8UC3;
    const cv::Mat picture =
        black_patterns::Picture(random, cv::Size{random.Size(700), random.Int(1, 4)}, type);
    const GuardedMatrix guarded(random, picture);
    Check(guarded.View());
    EXPECT_TRUE(guarded.Untouched());
  });
}

}  // namespace

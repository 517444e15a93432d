#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>
#include <vector>

#include "picture/grey.h"
#include "support/compare.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"
#include "support/rows.h"

namespace {

class GreyRows : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(GreyRows);

using Bytes = std::vector<std::uint8_t>;

std::uint8_t Grey(const std::uint8_t* p) {
  return static_cast<std::uint8_t>((9798 * p[0] + 19235 * p[1] + 3735 * p[2] + 16384) >> 15);
}

TEST_P(GreyRows, KnownAnswers) {
  // 100 pixels of one colour, so that every lane has it.
  const struct {
    int colour[3], grey;
  } cases[] = {{{0, 0, 0}, 0},      {{255, 255, 255}, 255}, {{255, 0, 0}, 76}, {{0, 255, 0}, 150},
               {{0, 0, 255}, 29},   {{0, 0, 4}, 0},         {{0, 0, 5}, 1},    {{1, 0, 1}, 0},
               {{10, 200, 30}, 124}};  // 97980 + 3847000 + 112050 + 16384 = 124.3 * 32768
  for (const auto& row : cases) {
    Bytes colour(300);
    for (std::size_t k = 0; k < colour.size(); ++k) {
      colour[k] = static_cast<std::uint8_t>(row.colour[k % 3]);
    }
    Bytes grey(100);
    jqstitching::GreyRow(colour.data(), 100, grey.data());
    EXPECT_EQ(grey, Bytes(100, static_cast<std::uint8_t>(row.grey)));
  }
}

TEST_P(GreyRows, GreyFollowsTheFormula) {
  Repeat(400, [](RandomSource& random) {
    const int cols = rows::Width(random, 500);
    const Bytes colour = rows::Bytes(random, 3 * static_cast<std::size_t>(cols));
    Bytes expected(static_cast<std::size_t>(cols));
    for (std::size_t k = 0; k < expected.size(); ++k) expected[k] = Grey(colour.data() + 3 * k);
    rows::GuardedRow<std::uint8_t> grey(random, expected.size());
    jqstitching::GreyRow(colour.data(), cols, grey.data());
    EXPECT_TRUE(rows::Same(grey.data(), expected));
    EXPECT_TRUE(grey.Intact());
  });
}

TEST_P(GreyRows, HalvesFollowTheFormula) {
  Repeat(400, [](RandomSource& random) {
    const int cols = rows::Width(random, 400);
    const Bytes upper = rows::Bytes(random, 2 * static_cast<std::size_t>(cols));
    const Bytes lower = rows::Bytes(random, 2 * static_cast<std::size_t>(cols));
    Bytes expected(static_cast<std::size_t>(cols));
    for (std::size_t k = 0; k < expected.size(); ++k) {
      const int sum = upper[2 * k] + upper[2 * k + 1] + lower[2 * k] + lower[2 * k + 1];
      expected[k] = static_cast<std::uint8_t>((sum + 2) / 4);
    }
    rows::GuardedRow<std::uint8_t> half(random, expected.size());
    jqstitching::HalveRows(upper.data(), lower.data(), cols, half.data());
    EXPECT_TRUE(rows::Same(half.data(), expected));
    EXPECT_TRUE(half.Intact());
  });
}

// Views, odd sizes, colour and grey, by the kernels and by the way out.
TEST_P(GreyRows, PicturesAreTheLibrarysOwn) {
  Repeat(200, [](RandomSource& random) {
    const int type = random.OneIn(3) ? CV_8UC1 : CV_8UC3;
    const int rowCount = 1 + random.Size(60);
    const int cols = 1 + random.Size(200);
    const cv::Mat content = pictures::Any(random, rowCount, cols, type);
    const GuardedMatrix guarded(random, content);
    const cv::Mat picture = guarded.View();
    cv::Mat grey = picture.clone(), half;
    if (type == CV_8UC3) cv::cvtColor(picture, grey, cv::COLOR_RGB2GRAY);
    cv::resize(grey, half, cv::Size(cols / 2, rowCount / 2), 0, 0, cv::INTER_LINEAR);

    jqstitching::ScratchPicture greyMemory, halfMemory, scratch, otherHalf;
    int seen = 0;
    const auto both = jqstitching::ToGreyAndHalf(picture, greyMemory, halfMemory,
                                                 [&seen](int r) { EXPECT_EQ(r, seen++); });
    EXPECT_EQ(seen, rowCount);
    EXPECT_TRUE(SameMatrix(both.grey, grey));
    EXPECT_TRUE(SameMatrix(both.half, half));
    EXPECT_TRUE(SameMatrix(jqstitching::ToHalf(picture, scratch, otherHalf), half));
    EXPECT_TRUE(jqstitching::IsGreyOf(picture, grey, scratch));
    unsigned char& sample = grey.at<unsigned char>(random.Int(0, rowCount - 1), cols - 1);
    sample = static_cast<unsigned char>(sample ^ 1);
    EXPECT_FALSE(jqstitching::IsGreyOf(picture, grey, scratch));
    EXPECT_TRUE(guarded.Untouched());
  });
}

}  // namespace

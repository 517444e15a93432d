// Growth of a picture: in place, or by a copy, always the borders that the image library
// gives.

#include "blend/kernels/borders.h"

#include <gtest/gtest.h>

#include <climits>
#include <opencv2/imgproc.hpp>

#include "picture/growable_pixels.h"
#include "support/compare.h"
#include "support/outcome.h"
#include "support/pictures.h"

using jqstitching::AddBorders;
using jqstitching::Borders;
using jqstitching::GrowableZeros;
using jqstitching::RemoveBorders;

namespace {

cv::Mat Growable(const cv::Mat& picture) {
  cv::Mat growable = GrowableZeros(picture.rows, picture.cols, picture.type());
  picture.copyTo(growable);
  return growable;
}

// The definition: the image library's borders on a picture that stands alone.
cv::Mat Plain(const cv::Mat& picture, const Borders& borders) {
  cv::Mat grown;
  cv::copyMakeBorder(picture.clone(), grown, borders.top, borders.bottom, borders.left,
                     borders.right, cv::BORDER_CONSTANT, cv::Scalar(0, 0, 0, 0));
  return grown;
}

Borders SomeBorders(RandomSource& random) {
  const auto some = [&] { return random.OneIn(2) ? 0 : random.Size(90); };
  Borders borders;
  borders.top = some();
  borders.bottom = some();
  borders.left = some();
  borders.right = some();
  return borders;
}

bool Any(const Borders& borders) {
  return borders.top != 0 || borders.bottom != 0 || borders.left != 0 || borders.right != 0;
}

// What a host may rely on of a header: rows side by side, and no matrix around it.
void ExpectOrdinary(const cv::Mat& picture) {
  cv::Size whole;
  cv::Point place;
  picture.locateROI(whole, place);
  EXPECT_EQ(whole, picture.size());
  EXPECT_EQ(place, cv::Point());
  EXPECT_TRUE(picture.isContinuous());
  EXPECT_FALSE(picture.isSubmatrix());
  EXPECT_EQ(picture.step[0], picture.cols * picture.elemSize());
  EXPECT_EQ(picture.allocator, nullptr);
}

template <class Round>
void Repeat(int usualRounds, Round round) {
  const std::uint64_t first = TestSeed();
  const int rounds = TestRounds(usualRounds);
  std::printf("first seed %llu, %d rounds\n", static_cast<unsigned long long>(first), rounds);
  for (int k = 0; k < rounds && !::testing::Test::HasFailure(); ++k) {
    const std::uint64_t seed = first + static_cast<std::uint64_t>(k);
    SCOPED_TRACE("repeat with JQ_TEST_SEED=" + std::to_string(seed) + " JQ_TEST_ROUNDS=1");
    RandomSource random(seed);
    round(random);
  }
}

const int kTypes[] = {CV_8UC1, CV_8UC2, CV_8UC3, CV_8UC4};

cv::Mat SomePicture(RandomSource& random) {
  const cv::Size size{random.Size(150), random.Size(150)};
  return pictures::Noise(random, size, kTypes[random.Int(0, 3)]);
}

}  // namespace

// Several growths after one another, so that each starts from what the last one left.
TEST(Borders, GrowthInPlaceIsTheImageLibrarys) {
  Repeat(300, [](RandomSource& random) {
    cv::Mat expected = SomePicture(random);
    cv::Mat grown = Growable(expected);
    for (int k = 0; k < 4; ++k) {
      const Borders borders = SomeBorders(random);
      expected = Plain(expected, borders);
      EXPECT_EQ(AddBorders(grown, borders, 1), Any(borders));
      ASSERT_TRUE(SameMatrix(grown, expected))
          << borders.top << " " << borders.bottom << " " << borders.left << " " << borders.right;
      ExpectOrdinary(grown);
    }
  });
}

// In and out again in any order, with pixels in the borders that go.
TEST(Borders, WhatWasTakenAwayLeavesNoTrace) {
  Repeat(300, [](RandomSource& random) {
    cv::Mat expected = SomePicture(random);
    cv::Mat picture = Growable(expected);
    for (int k = 0; k < 6; ++k) {
      Borders borders = SomeBorders(random);
      if (random.OneIn(2)) {
        expected = Plain(expected, borders);
        AddBorders(picture, borders, 1);
        ASSERT_TRUE(SameMatrix(picture, expected));
        const cv::Mat noise = pictures::Noise(random, picture.size(), picture.type());
        noise.copyTo(picture);
        noise.copyTo(expected);
      } else if (borders.left + borders.right < picture.cols &&
                 borders.top + borders.bottom < picture.rows) {
        expected = expected(cv::Rect(borders.left, borders.top,
                                     expected.cols - borders.left - borders.right,
                                     expected.rows - borders.top - borders.bottom))
                       .clone();
        EXPECT_EQ(RemoveBorders(picture, borders, 1), Any(borders));
      }
      ASSERT_TRUE(SameMatrix(picture, expected));
      ExpectOrdinary(picture);
    }
  });
}

TEST(Borders, WhoeverSharesThePixelsKeepsThem) {
  Repeat(200, [](RandomSource& random) {
    const cv::Mat before = SomePicture(random);
    Borders borders = SomeBorders(random);
    borders.bottom += 1;
    const Borders smaller{before.rows > 1 ? 1 : 0, 0, before.cols > 1 ? 1 : 0, 0};
    cv::Mat picture = Growable(before);
    // A header, a part, another shape, a view from another kind of matrix.
    cv::Mat other = random.OneIn(2) ? picture : picture.row(0);
    if (random.OneIn(3)) other = picture.reshape(1);
    const cv::UMat device = random.OneIn(3) ? picture.getUMat(cv::ACCESS_READ) : cv::UMat();
    if (!device.empty()) other = cv::Mat();
    const cv::Mat otherBefore = other.clone();
    const bool growing = random.OneIn(2);
    EXPECT_FALSE(growing ? AddBorders(picture, borders, 1) : RemoveBorders(picture, smaller, 1));
    EXPECT_TRUE(SameMatrix(other, otherBefore));
    EXPECT_TRUE(device.empty() || SameMatrix(device.getMat(cv::ACCESS_READ), before));
    if (growing) {
      EXPECT_TRUE(SameMatrix(picture, Plain(before, borders)));
      EXPECT_TRUE(jqstitching::IsGrowable(picture));
    } else {
      EXPECT_TRUE(
          SameMatrix(picture, before(cv::Rect(smaller.left, smaller.top, before.cols - smaller.left,
                                              before.rows - smaller.top))));
    }
    ExpectOrdinary(picture);
    // Alone again, it grows in place.
    other.release();
    EXPECT_TRUE(!growing || AddBorders(picture, borders, 1));
  });
}

TEST(Borders, HeadersAtHandDoNotCount) {
  const cv::Mat before(7, 9, CV_8UC3, cv::Scalar(1, 2, 3));
  cv::Mat picture = Growable(before);
  cv::Mat second = picture;
  EXPECT_TRUE(AddBorders(picture, {0, 5000, 0, 0}, 2));
  second = picture;
  EXPECT_TRUE(SameMatrix(second, Plain(before, {0, 5000, 0, 0})));
  EXPECT_TRUE(RemoveBorders(picture, {0, 5000, 0, 0}, 2));
  second = picture;
  const cv::Mat third = picture;
  EXPECT_FALSE(AddBorders(picture, {0, 1, 0, 0}, 2));
  EXPECT_TRUE(SameMatrix(third, before));
  EXPECT_FALSE(AddBorders(second, {0, 1, 0, 0}, 0));
}

// Everything that is not a whole growable matrix is the image library's, with what a view
// finds around it.
TEST(Borders, OtherMatricesAreLeftToTheImageLibrary) {
  Repeat(200, [](RandomSource& random) {
    const cv::Mat whole = SomePicture(random);
    const int left = random.Int(0, whole.cols - 1);
    const int top = random.Int(0, whole.rows - 1);
    const cv::Rect part{left, top, random.Int(1, whole.cols - left),
                        random.Int(1, whole.rows - top)};
    const Borders borders = SomeBorders(random);
    const cv::Mat source = random.OneIn(2) ? Growable(whole) : whole.clone();
    cv::Mat expected;
    cv::copyMakeBorder(source(part), expected, borders.top, borders.bottom, borders.left,
                       borders.right, cv::BORDER_CONSTANT, cv::Scalar(0, 0, 0, 0));
    cv::Mat picture = source(part);
    EXPECT_FALSE(AddBorders(picture, borders, 1));
    EXPECT_TRUE(SameMatrix(picture, expected));
    EXPECT_TRUE(SameMatrix(source, whole));
  });
}

TEST(Borders, AnotherDefaultAllocatorGetsItsWay) {
  class Other : public cv::MatAllocator {
   public:
    cv::UMatData* allocate(int dims, const int* sizes, int type, void* data, size_t* step,
                           cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
      return cv::Mat::getStdAllocator()->allocate(dims, sizes, type, data, step, flags, usage);
    }
    bool allocate(cv::UMatData*, cv::AccessFlag, cv::UMatUsageFlags) const override { return true; }
    void deallocate(cv::UMatData* data) const override {
      cv::Mat::getStdAllocator()->deallocate(data);
    }
  } other;
  cv::Mat::setDefaultAllocator(&other);
  const cv::Mat zeros = GrowableZeros(4, 6, CV_8UC3);
  cv::Mat::setDefaultAllocator(cv::Mat::getStdAllocator());
  EXPECT_FALSE(jqstitching::IsGrowable(zeros));
  EXPECT_TRUE(SameMatrix(zeros, cv::Mat::zeros(4, 6, CV_8UC3)));
}

// 2^31 rows of 90000 bytes are more than a process can address.
TEST(Borders, MemoryThatCannotBeHadChangesNothing) {
  const cv::Mat before(3, 30000, CV_8UC3, cv::Scalar(4, 5, 6));
  for (const bool shared : {false, true}) {
    cv::Mat picture = Growable(before);
    const cv::Mat other = shared ? picture : cv::Mat();
    const unsigned char* const pixels = picture.data;
    for (const Borders& borders : {Borders{INT_MAX - 3, 0, 0, 0}, Borders{0, INT_MAX - 3, 0, 0},
                                   Borders{1000000000, 1000000000, 1000000000, 1000000000}}) {
      EXPECT_EQ(Ending([&] { AddBorders(picture, borders, 1); }), Outcome::kImageLibraryError);
      EXPECT_EQ(picture.data, pixels);
      EXPECT_TRUE(SameMatrix(picture, before));
    }
    EXPECT_EQ(AddBorders(picture, {1, 0, 0, 1}, 1), !shared);
    EXPECT_TRUE(SameMatrix(picture, Plain(before, {1, 0, 0, 1})));
  }
}

// A size that leaves 32 bits, or a border below 0, is refused for every kind of matrix.
TEST(Borders, ImpossibleSizesAreRefused) {
  const cv::Mat before(3, 4, CV_8UC1, cv::Scalar(4));
  for (const bool growable : {false, true}) {
    cv::Mat picture = growable ? Growable(before) : before.clone();
    for (const Borders& borders :
         {Borders{INT_MAX, 0, 0, 0}, Borders{0, 0, INT_MAX, INT_MAX}, Borders{-1, 0, 0, 0},
          Borders{INT_MIN, 0, 0, 0}, Borders{0, 0, 7, -7}, Borders{INT_MIN, INT_MIN, 0, 0}}) {
      EXPECT_EQ(Ending([&] { AddBorders(picture, borders, 1); }), Outcome::kImageLibraryError);
      EXPECT_TRUE(SameMatrix(picture, before));
    }
  }
}

// No pixels at all, in no time.
TEST(Borders, AnEmptyPictureStaysEmptyWithRowsOrColumnsAlone) {
  for (const int type : {CV_8UC1, CV_8UC3}) {
    cv::Mat picture(0, 0, type);
    EXPECT_FALSE(AddBorders(picture, {INT_MAX, 0, 0, 0}, 1));
    EXPECT_EQ(picture.rows, INT_MAX);
    EXPECT_EQ(picture.cols, 0);
    EXPECT_EQ(picture.type(), type);
    EXPECT_TRUE(picture.empty());
    cv::Mat both(0, 0, type);
    EXPECT_FALSE(AddBorders(both, {1, 2, 3, 4}, 1));
    EXPECT_TRUE(SameMatrix(both, cv::Mat::zeros(3, 7, type)));
  }
}

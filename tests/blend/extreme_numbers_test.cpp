// Numbers at the limits of their type, in all combinations, against the rules in 64 bits.
// Whatever does not fit raises the image library's error and changes nothing.

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>

#include "jqstitchingalgorithm.h"
#include "support/compare.h"
#include "support/outcome.h"

namespace {

constexpr int kNumbers[] = {INT_MIN, INT_MIN + 1, -21, -1, 0, 1, 5, 20, INT_MAX - 1, INT_MAX};

int Wrapped(std::int64_t number) {
  return static_cast<int>(static_cast<std::uint32_t>(number));
}

// A mosaic of 60 columns x 50 rows in which every frame has 12 x 10 pixels.
constexpr int kCols = 60, kRows = 50, kFrameCols = 12, kFrameRows = 10;

// Which border one axis gets, and whether the far one.
struct Side {
  bool near, far;
};

Side SideFor(std::int64_t at, int frame, int mosaic) {
  if (at <= 0) return {true, false};
  return {false, at + frame >= mosaic};
}

}  // namespace

TEST(ExtremeNumbers, ContentBox) {
  JQStitchingAlgorithm engine;
  for (const int low : kNumbers) {
    for (const int high : kNumbers) {
      for (const int start : kNumbers) {
        for (const int length : kNumbers) {
          const std::int64_t end = std::int64_t{start} + length;
          int newLow = low, newHigh = high;
          if (start >= low && end <= high) {
          } else if (start < low && end < high) {
            newLow = start;
          } else if (start > low) {
            newHigh = Wrapped(std::max<std::int64_t>(end, high));
          }
          // Across and down, with the other axis in peace.
          for (const bool across : {true, false}) {
            const auto point = [&](int own, int other) {
              return across ? cv::Point(own, other) : cv::Point(other, own);
            };
            cv::Point boxMin(-7, -8), boxMax(-9, -10);
            engine.outputImageCoordate(point(low, 1), point(high, 9), INT_MIN, INT_MAX,
                                       across ? 4 : length, across ? length : 4, point(start, 2),
                                       boxMin, boxMax);
            ASSERT_TRUE(boxMin == point(newLow, 1) && boxMax == point(newHigh, 9))
                << "box " << low << " to " << high << ", frame at " << start << ", size " << length
                << ", across " << across << ": " << boxMin << " " << boxMax << " instead of "
                << newLow << " " << newHigh;
          }
        }
      }
    }
  }
}

TEST(ExtremeNumbers, BorderExpand) {
  JQStitchingAlgorithm engine;
  const cv::Mat mosaic(kRows, kCols, CV_8UC3, cv::Scalar(1, 2, 3));
  const cv::Mat before = mosaic.clone();
  for (const int position : kNumbers) {
    for (const int offset : kNumbers) {
      for (const int frame : kNumbers) {
        for (const int grow : {INT_MIN, -1, 0, 2, INT_MAX}) {
          for (const bool across : {true, false}) {
            const std::int64_t at = std::int64_t{position} + offset;
            const Side side = SideFor(at, frame, across ? kCols : kRows);
            const int amount = side.near || side.far ? grow : 0;
            const bool fails = amount < 0 || amount == INT_MAX;
            const auto point = [&](int own, int other) {
              return across ? cv::Point(own, other) : cv::Point(other, own);
            };
            cv::Mat grown;
            cv::Point moved(-1, -2), boxMin(-3, -4), boxMax(-5, -6);
            // The other axis lies inside, far from the edges.
            const Outcome outcome = Ending([&] {
              engine.BorderExpand(mosaic, across ? 7 : grow, across ? grow : 7, across ? offset : 0,
                                  across ? 0 : offset, across ? 10 : frame, across ? frame : 10,
                                  kCols, kRows, point(position, 20), grown, moved, point(30, 30),
                                  point(40, 40), boxMin, boxMax);
            });
            SCOPED_TRACE(testing::Message() << position << " + " << offset << ", frame " << frame
                                            << ", growth " << grow << ", across " << across);
            ASSERT_EQ(outcome, fails ? Outcome::kImageLibraryError : Outcome::kReturned);
            ASSERT_EQ(std::memcmp(mosaic.data, before.data, before.total() * 3), 0);
            if (fails) {
              ASSERT_TRUE(grown.empty() && moved == cv::Point(-1, -2) &&
                          boxMin == cv::Point(-3, -4) && boxMax == cv::Point(-5, -6));
              continue;
            }
            const int shift = side.near ? amount : 0;
            ASSERT_EQ(grown.size(),
                      cv::Size(kCols + (across ? amount : 0), kRows + (across ? 0 : amount)));
            ASSERT_EQ(moved, point(Wrapped(std::int64_t{position} + shift), 20));
            ASSERT_EQ(boxMin, point(30 + shift, 30));
            ASSERT_EQ(boxMax, point(40 + shift, 40));
          }
        }
      }
    }
  }
}

TEST(ExtremeNumbers, BlendDriver) {
  JQStitchingAlgorithm engine;
  for (const int position : kNumbers) {
    for (const int offset : kNumbers) {
      for (const bool across : {true, false}) {
        SCOPED_TRACE(testing::Message() << position << " + " << offset << ", across " << across);
        cv::Mat mosaic(kRows, kCols, CV_8UC3, cv::Scalar(1, 2, 3));
        const cv::Mat before = mosaic.clone();
        const cv::Mat frame(kFrameRows, kFrameCols, CV_8UC3, cv::Scalar(9, 9, 9));
        const int step = across ? kFrameCols : kFrameRows;
        const int size = across ? kCols : kRows;
        const std::int64_t at = std::int64_t{position} + offset;
        const Side side = SideFor(at, step, size);
        const std::int64_t placed = at + (side.near ? step : 0);
        const bool fits = placed >= 0 && placed + step <= size + (side.near || side.far ? step : 0);
        stitchflags flags;
        flags.positionX = across ? position : 20;
        flags.positionY = across ? 20 : position;
        flags.offsetX = across ? offset : 0;
        flags.offsetY = across ? 0 : offset;
        cv::Mat result, region;
        cv::Point boxMin(-3, -4), boxMax(-5, -6), moved(-1, -2);
        const Outcome outcome = Ending([&] {
          engine.StitchingImage_imageblend(mosaic, frame, flags, {20, 20}, {32, 30}, {}, boxMin,
                                           boxMax, moved, result, region);
        });
        ASSERT_EQ(outcome, fits ? Outcome::kReturned : Outcome::kImageLibraryError);
        if (!fits) {
          ASSERT_TRUE(SameMatrix(mosaic, before));
          ASSERT_TRUE(result.empty() && region.empty() && moved == cv::Point(-1, -2) &&
                      boxMin == cv::Point(-3, -4) && boxMax == cv::Point(-5, -6));
          continue;
        }
        const int there = static_cast<int>(placed);
        ASSERT_EQ(moved, across ? cv::Point(there, 20) : cv::Point(20, there));
        ASSERT_TRUE(SameMatrix(result(cv::Rect(moved, frame.size())), region));
      }
    }
  }
}

TEST(ExtremeNumbers, DetectionLevelOfTheBlendDriver) {
  const cv::Mat mosaic(kRows, kCols, CV_8UC3, cv::Scalar(1, 2, 3));
  const cv::Mat frame(kFrameRows, kFrameCols, CV_8UC3, cv::Scalar(9, 9, 9));
  const cv::Mat before = mosaic.clone();
  for (const int level : {INT_MIN, -1, 0, 13, INT_MAX}) {
    SCOPED_TRACE(level);
    JQStitchingAlgorithm engine;
    engine.m_nDetectLevel = level;
    cv::Mat result, region;
    cv::Point boxMin, boxMax, moved;
    EXPECT_EQ(Ending([&] {
                engine.StitchingImage_imageblend(mosaic, frame, stitchflags(), {}, {}, {}, boxMin,
                                                 boxMax, moved, result, region);
              }),
              Outcome::kImageLibraryError);
    EXPECT_TRUE(SameMatrix(mosaic, before));
    EXPECT_TRUE(result.empty());
  }
}

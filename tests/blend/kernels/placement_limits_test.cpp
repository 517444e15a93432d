#include <gtest/gtest.h>

#include <climits>

#include "jqstitchingalgorithm.h"
#include "support/compare.h"
#include "support/outcome.h"
#include "support/pictures.h"

namespace {

// Sums that do not fit 32 bits must not wrap into a place inside the mosaic.
TEST(PlacementLimits, FarPlacesAreRefusedAndNothingChanges) {
  const struct {
    int position;
    int offset;
  } rows[] = {{INT_MAX, INT_MAX}, {INT_MIN, INT_MIN}, {INT_MAX, 40}, {INT_MIN, -40}};
  RandomSource random(TestSeed());
  const cv::Mat mosaic = pictures::Noise(random, 60, 60, CV_8UC3);
  const cv::Mat frame = pictures::Noise(random, 20, 20, CV_8UC3);
  const cv::Mat beforeMosaic = mosaic.clone();
  const cv::Mat beforeFrame = frame.clone();
  for (const auto& row : rows) {
    for (const bool across : {false, true}) {
      SCOPED_TRACE(testing::Message()
                   << row.position << " + " << row.offset << ", across " << across);
      stitchflags flags;
      flags.positionX = across ? row.position : 20;
      flags.positionY = across ? 20 : row.position;
      (across ? flags.offsetX : flags.offsetY) = row.offset;
      JQStitchingAlgorithm engine;
      cv::Point newMin(1, 2), newMax(3, 4), newPosition(5, 6);
      cv::Mat newMosaic, region;
      const Outcome outcome = Ending([&] {
        engine.StitchingImage_imageblend(mosaic, frame, flags, cv::Point(20, 20), cv::Point(40, 40),
                                         cv::Point(), newMin, newMax, newPosition, newMosaic,
                                         region);
      });
      EXPECT_EQ(outcome, Outcome::kImageLibraryError);
      EXPECT_EQ(newMin, cv::Point(1, 2));
      EXPECT_EQ(newMax, cv::Point(3, 4));
      EXPECT_EQ(newPosition, cv::Point(5, 6));
      EXPECT_TRUE(newMosaic.empty());
      EXPECT_TRUE(SameMatrix(mosaic, beforeMosaic));
      EXPECT_TRUE(SameMatrix(frame, beforeFrame));
    }
  }
}

TEST(PlacementLimits, TheContentBoxComparesBeyond32Bits) {
  JQStitchingAlgorithm engine;
  cv::Point newMin, newMax;
  // The frame's end wraps below the box's, were it 32 bits wide.
  engine.outputImageCoordate(cv::Point(10, 10), cv::Point(50, 50), 0, 0, 30, 30,
                             cv::Point(5, INT_MAX - 10), newMin, newMax);
  EXPECT_EQ(newMin, cv::Point(5, 10));
  EXPECT_NE(newMax.y, 50);
}

}  // namespace

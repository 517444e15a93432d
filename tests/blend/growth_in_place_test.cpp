// A mosaic that grows in place must be placed into exactly like one that is copied, and an
// error must leave its pixels where they are: a host may hold a pointer to them.

#include <gtest/gtest.h>

#include "picture/growable_pixels.h"
#include "support/address_limit.h"
#include "support/compare.h"
#include "support/outcome.h"
#include "support/pictures.h"
#include "support/property_test.h"

namespace {

struct Placed {
  cv::Mat mosaic, region;
  cv::Point boxMin, boxMax, position;

  explicit Placed(const cv::Mat& start, bool growable) {
    mosaic = growable ? jqstitching::GrowableZeros(start.rows, start.cols, start.type())
                      : cv::Mat(start.size(), start.type());
    start.copyTo(mosaic);
  }
  Outcome Place(JQStitchingAlgorithm& engine, const cv::Mat& frame, const stitchflags& flags) {
    return Ending([&] {
      engine.StitchingImage_imageblend(mosaic, frame, flags, boxMin, boxMax, cv::Point(), boxMin,
                                       boxMax, position, mosaic, region);
    });
  }
};

stitchflags Flags(cv::Point position, cv::Point offset) {
  stitchflags flags;
  flags.positionX = position.x;
  flags.positionY = position.y;
  flags.offsetX = offset.x;
  flags.offsetY = offset.y;
  return flags;
}

class GrowthInPlace : public PropertyTest {};

}  // namespace

TEST_P(GrowthInPlace, IsThatOfACopy) {
  Repeat(40, [](RandomSource& random) {
    const int type = random.OneIn(2) ? CV_8UC3 : CV_8UC1;
    const int level = random.Int(1, 2);
    const cv::Size frame{random.Int(3, 90), random.Int(3, 90)};
    JQStitchingAlgorithm engine;
    engine.SetParameter(level, 8, 0, 1);
    const cv::Mat start = pictures::Any(random, 2 * frame.height, 2 * frame.width, type);
    Placed library(start, true), plain(start, false);
    library.position = plain.position = cv::Point(frame.width / 2, frame.height / 2);
    for (int k = 0; k < 5; ++k) {
      const cv::Point offset{random.Int(-frame.width, frame.width),
                             random.Int(-frame.height, frame.height)};
      const stitchflags flags = Flags(plain.position, offset);
      const cv::Mat picture =
          pictures::Any(random, frame.height * level, frame.width * level, type);
      const cv::Mat held = random.OneIn(3) ? library.mosaic : cv::Mat();
      const cv::Mat heldBefore = held.clone();
      const cv::Size before = library.mosaic.size();
      const unsigned char* const pixels = library.mosaic.data;
      const Outcome outcome = plain.Place(engine, picture.clone(), flags);
      EXPECT_EQ(library.Place(engine, picture.clone(), flags), outcome);
      ASSERT_TRUE(SameMatrix(library.mosaic, plain.mosaic));
      EXPECT_TRUE(library.region.empty() == plain.region.empty() &&
                  (plain.region.empty() || SameMatrix(library.region, plain.region)));
      EXPECT_EQ(library.position, plain.position);
      EXPECT_EQ(library.boxMin, plain.boxMin);
      EXPECT_EQ(library.boxMax, plain.boxMax);
      EXPECT_TRUE(jqstitching::IsGrowable(library.mosaic));
      if (outcome != Outcome::kReturned) {
        EXPECT_EQ(library.mosaic.data, pixels);
      }
      // Another header sees what is placed, but not growth.
      if (!held.empty()) {
        const bool grew = library.mosaic.size() != before;
        EXPECT_TRUE(SameMatrix(held, grew ? heldBefore : library.mosaic));
      }
    }
  });
}

JQ_AT_EVERY_CPU_LEVEL(GrowthInPlace);

TEST(MovedPixels, MovesThePixelsOnlyForACallerWhoGetsThem) {
  JQStitchingAlgorithm engine;
  const cv::Mat start(40, 60, CV_8UC3, cv::Scalar(1, 2, 3));
  const cv::Mat frame(20, 30, CV_8UC3, cv::Scalar(9, 8, 7));
  const stitchflags flags = Flags({15, 10}, {0, 15});
  {
    Placed run(start, true);
    const cv::UMatData* const pixels = run.mosaic.u;
    EXPECT_EQ(run.Place(engine, frame.clone(), flags), Outcome::kReturned);
    EXPECT_EQ(run.mosaic.rows, 60);
    EXPECT_EQ(run.mosaic.u, pixels);
  }
  {
    // The result goes elsewhere, so that the caller's mosaic stays.
    Placed run(start, true);
    cv::Mat result;
    engine.StitchingImage_imageblend(run.mosaic, frame.clone(), flags, {}, {}, {}, run.boxMin,
                                     run.boxMax, run.position, result, run.region);
    EXPECT_EQ(result.rows, 60);
    EXPECT_TRUE(SameMatrix(run.mosaic, start));
  }
  {
    // The result goes into a view of the mosaic, not into the mosaic.
    Placed run(start, true);
    cv::Mat view = run.mosaic.rowRange(3, 7);
    engine.StitchingImage_imageblend(run.mosaic, frame.clone(), flags, {}, {}, {}, run.boxMin,
                                     run.boxMax, run.position, view, run.region);
    EXPECT_EQ(view.rows, 60);
    EXPECT_TRUE(SameMatrix(run.mosaic, start));
  }
  {
    // Growth alone takes its matrix by value too.
    Placed run(start, true);
    cv::Mat grown;
    engine.BorderExpand(run.mosaic, 20, 30, 0, 15, 20, 30, 60, 40, {15, 10}, grown, run.position,
                        {}, {}, run.boxMin, run.boxMax);
    EXPECT_EQ(grown.rows, 60);
    EXPECT_TRUE(SameMatrix(run.mosaic, start));
  }
}

// A header made from a bare pointer counts for nothing, so that its place is looked at.
TEST(MovedPixels, AFrameThatShowsTheMosaicIsReadBeforeItMoves) {
  JQStitchingAlgorithm engine;
  RandomSource random(3);
  const cv::Mat start = pictures::Texture(random, 40, 60, CV_8UC3);
  Placed library(start, true), plain(start, false);
  const stitchflags flags = Flags({15, 10}, {0, -15});
  for (Placed* run : {&library, &plain}) {
    const cv::Mat frame(20, 30, CV_8UC3, run->mosaic.ptr(4, 5), run->mosaic.step);
    EXPECT_EQ(run->Place(engine, frame, flags), Outcome::kReturned);
    run->region.release();
  }
  EXPECT_TRUE(SameMatrix(library.mosaic, plain.mosaic));
}

TEST(MovedPixels, AnErrorLeavesThePixelsWhereTheyAre) {
  JQStitchingAlgorithm engine;
  const cv::Mat start(40, 60, CV_8UC3, cv::Scalar(1, 2, 3));
  const struct {
    const char* name;
    cv::Mat frame;
    cv::Point offset;
  } rows[] = {{"one-channel frame", cv::Mat::ones(20, 30, CV_8UC1), {0, 15}},
              {"no frame", cv::Mat(), {0, 15}},
              {"rows without columns", cv::Mat(5, 0, CV_8UC3), {0, 30}},
              {"still outside", cv::Mat::ones(20, 30, CV_8UC3), {0, 40}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Placed run(start, true);
    const unsigned char* const pixels = run.mosaic.data;
    EXPECT_EQ(run.Place(engine, row.frame, Flags({15, 10}, row.offset)),
              Outcome::kImageLibraryError);
    EXPECT_EQ(run.mosaic.data, pixels);
    EXPECT_TRUE(SameMatrix(run.mosaic, start));
  }
}

// Twice: alone it would be made longer, shared it would be copied.
TEST(MovedPixels, RefusedMemoryLeavesTheMosaicAndTheNextFrameIsPlaced) {
  JQStitchingAlgorithm engine;
  const cv::Size size(900, 700);
  const cv::Mat start(2 * size.height, 2 * size.width, CV_8UC3, cv::Scalar(1, 2, 3));
  const cv::Mat frame(size, CV_8UC3, cv::Scalar(9, 8, 7));
  const stitchflags inside = Flags({450, 350}, {20, 10});
  const stitchflags outside = Flags({450, 350}, {20, 400});
  for (const bool shared : {false, true}) {
    Placed run(start, true);
    ASSERT_EQ(run.Place(engine, frame.clone(), inside), Outcome::kReturned);
    const cv::Mat before = run.mosaic.clone();
    const cv::Mat held = shared ? run.mosaic : cv::Mat();
    const unsigned char* const pixels = run.mosaic.data;
    const cv::Mat picture = frame.clone();
    {
      const AddressLimit limit(std::size_t{1} << 20);
      if (!limit.holds()) GTEST_SKIP() << "no limit of address space here";
      EXPECT_EQ(run.Place(engine, picture, outside), Outcome::kImageLibraryError);
    }
    EXPECT_EQ(run.mosaic.data, pixels);
    EXPECT_TRUE(SameMatrix(run.mosaic, before));
    EXPECT_TRUE(SameMatrix(picture, frame));
    EXPECT_EQ(run.Place(engine, picture, outside), Outcome::kReturned);
    EXPECT_EQ(run.mosaic.rows, 3 * size.height);
  }
}

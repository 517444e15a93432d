#include <gtest/gtest.h>

#include <cmath>

#include "batch_files.h"
#include "flat_run.h"
#include "support/compare.h"
#include "support/outcome.h"
#include "support/scenes.h"

namespace {

const char* const kNames[] = {"Right", "DownRight", "Down", "DownLeft",
                              "Left",  "UpLeft",    "Up",   "UpRight"};

class EveryDirection : public ::testing::TestWithParam<int> {
 protected:
  cv::Point direction() const { return scenes::Directions()[GetParam()]; }
};

// No pixel of a placed frame is black, so a frame that lost pixels shows.
bool HasBlack(const cv::Mat& picture) {
  cv::Mat black;
  cv::inRange(picture, cv::Scalar::all(0), cv::Scalar::all(0), black);
  return cv::countNonZero(black) > 0;
}

}  // namespace

// Seven steps, so that the mosaic grows more than once. The union of the frames is
// the frame widened by the whole way, wherever growth has moved it.
TEST_P(EveryDirection, LiveRunKeepsTheExactUnion) {
  const cv::Size size(100, 80);
  const cv::Point step(direction().x * 37, direction().y * 31);
  FlatRun run(size);
  run.Take(0, 0, 0);
  EXPECT_EQ(run.stitcher.GetPlacedBounds(), cv::Rect(50, 40, 100, 80));
  for (int k = 1; k <= 7; ++k) {
    run.Take(step.x, step.y);
    ASSERT_TRUE(run.stitcher.IsLastFrameAccepted());
    const cv::Rect bounds = run.stitcher.GetPlacedBounds();
    EXPECT_EQ(bounds.size(), cv::Size(100 + 37 * k * std::abs(direction().x),
                                      80 + 31 * k * std::abs(direction().y)));
    // The newest frame lies in the corner that the run has moved to.
    const cv::Point newest = run.stitcher.GetCurrentPosition();
    EXPECT_EQ(newest.x, direction().x > 0 ? bounds.br().x - 100 : bounds.x);
    EXPECT_EQ(newest.y, direction().y > 0 ? bounds.br().y - 80 : bounds.y);

    const cv::Mat mosaic = run.stitcher.GetMosaic();
    ASSERT_EQ(bounds & cv::Rect(cv::Point(), mosaic.size()), bounds);
    EXPECT_FALSE(HasBlack(mosaic(cv::Rect(newest, size))));
    // The first frame is still there whole, in the opposite corner.
    const cv::Point first(direction().x > 0 ? bounds.x : bounds.br().x - 100,
                          direction().y > 0 ? bounds.y : bounds.br().y - 80);
    EXPECT_FALSE(HasBlack(mosaic(cv::Rect(first, size))));
    // And nothing lies outside.
    cv::Mat outside = mosaic.clone();
    outside(bounds).setTo(cv::Scalar::all(0));
    EXPECT_EQ(cv::countNonZero(outside.reshape(1)), 0);
  }
}

TEST_P(EveryDirection, BatchRunKeepsTheExactUnion) {
  const cv::Size size(240, 200);
  const cv::Point step(direction().x * 60, direction().y * 50);
  RandomSource random(21);
  const cv::Mat scene = scenes::Dense(random, 420, 500);
  const cv::Point start(130 - 2 * step.x, 110 - 2 * step.y);
  BatchFiles files;
  for (int k = 0; k < 5; ++k) files.Add(scenes::Cut(scene, start + k * step, size));

  JQImageStitching stitcher;
  std::vector<cv::Size> sizes;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus,
                   [&] { sizes.push_back(stitcher.GetPlacedBounds().size()); });
  std::unique_ptr<BatchRun> run;
  const Outcome outcome =
      Ending([&] { run = std::make_unique<BatchRun>(stitcher, files.paths()); });
  ASSERT_EQ(stitcher.GetFrameCount(), 5);
  for (int k = 1; k < 5; ++k) {
    EXPECT_NEAR(sizes[k].width, 240 + 60 * k * std::abs(direction().x), 4 * k);
    EXPECT_NEAR(sizes[k].height, 200 + 50 * k * std::abs(direction().y), 4 * k);
  }
  const cv::Rect bounds = stitcher.GetPlacedBounds();
  const cv::Mat mosaic = stitcher.GetMosaic();
  ASSERT_EQ(bounds & cv::Rect(cv::Point(), mosaic.size()), bounds);
  // Where the box cannot be used, trimming at the end of the run raises the image
  // library's error; the picture is there all the same.
  const cv::Point extent = stitcher.GetContentMax() - stitcher.GetContentMin();
  EXPECT_EQ(outcome,
            extent.x < 0 || extent.y < 0 ? Outcome::kImageLibraryError : Outcome::kReturned);
  // The newest frame's leading corner lies on no other frame.
  const cv::Point newest = stitcher.GetCurrentPosition();
  const cv::Point leading((direction().x + 1) * (240 - 30) / 2,
                          (direction().y + 1) * (200 - 30) / 2);
  const cv::Size block(30, 30);
  EXPECT_TRUE(SameMatrix(mosaic(cv::Rect(newest + leading, block)),
                         scene(cv::Rect(start + 4 * step + leading, block))));
}

INSTANTIATE_TEST_SUITE_P(Stage, EveryDirection, ::testing::Range(0, 8),
                         [](const auto& row) { return std::string(kNames[row.param]); });

// Frame 100 x 80, mosaic 200 x 160, frame at (50, 40). The second frame at (100, 0)
// touches the top and the right: 80 rows and 100 columns are added, everything moves
// down by 80, but the box's minimum by 160 and its maximum not at all.
TEST(PlacedBounds, GrowthAtTheTopRightInvertsTheBox) {
  FlatRun run(cv::Size(100, 80));
  run.Take(0, 0, 0);
  run.Take(50, -40);
  ASSERT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_EQ(run.stitcher.GetMosaic().size(), cv::Size(300, 240));
  EXPECT_EQ(run.stitcher.GetCurrentPosition(), cv::Point(100, 80));
  EXPECT_EQ(run.stitcher.GetContentMin(), cv::Point(50, 200));
  EXPECT_EQ(run.stitcher.GetContentMax(), cv::Point(200, 120));
  EXPECT_EQ(run.stitcher.GetCurSize(), cv::Size(150, -80));
  EXPECT_EQ(run.stitcher.GetCurImageSize(), 150 * -80 * 3);

  HostRecord record(cv::Mat(80, 100, CV_8UC3, cv::Scalar::all(3)));
  EXPECT_EQ(Ending([&] { run.stitcher.CutEdge(); }), Outcome::kImageLibraryError);
  EXPECT_EQ(Ending([&] { run.stitcher.CutEdge(record.get()); }), Outcome::kImageLibraryError);

  EXPECT_EQ(run.stitcher.GetPlacedBounds(), cv::Rect(50, 80, 150, 120));
  const cv::Mat picture = run.stitcher.GetMosaic()(run.stitcher.GetPlacedBounds());
  EXPECT_FALSE(HasBlack(picture(cv::Rect(0, 40, 100, 80))));
  EXPECT_FALSE(HasBlack(picture(cv::Rect(50, 0, 100, 80))));
  EXPECT_EQ(picture.at<cv::Vec3b>(119, 0), cv::Vec3b::all(100));
  EXPECT_EQ(picture.at<cv::Vec3b>(0, 149), cv::Vec3b::all(102));

  // The run goes on from there.
  run.Take(50, 0);
  EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_EQ(run.stitcher.GetPlacedBounds().size(), cv::Size(200, 120));
}

// The box stays behind where a frame starts exactly at its minimum.
TEST(PlacedBounds, AreExactWhereTheBoxIsNot) {
  FlatRun run(cv::Size(100, 80));
  run.Take(0, 0, 0);
  run.Take(30, 0);
  EXPECT_EQ(run.stitcher.GetCurSize(), cv::Size(130, 80));
  run.Take(-45, 0);
  EXPECT_EQ(run.stitcher.GetCurSize(), cv::Size(145, 80));
  run.Take(0, 30);
  // From column 35: exactly at the minimum, and within.
  EXPECT_EQ(run.stitcher.GetCurSize(), cv::Size(145, 110));
  run.Take(0, -60);
  // From row 10 of a box 40..150, down to 90: the minimum follows.
  EXPECT_EQ(run.stitcher.GetContentMin(), cv::Point(35, 10));
  EXPECT_EQ(run.stitcher.GetPlacedBounds(), cv::Rect(35, 10, 145, 140));
}

TEST(PlacedBounds, AreExactWhereAFrameEndsAtTheBoxesMaximum) {
  FlatRun run(cv::Size(100, 80));
  run.Take(0, 0, 0);
  run.Take(30, 25);
  const cv::Point max = run.stitcher.GetContentMax();
  // Left of the minimum but down to the very maximum: the box's minimum stays.
  run.Take(-45, 0);
  EXPECT_EQ(run.stitcher.GetContentMin().y, 40);
  EXPECT_EQ(run.stitcher.GetContentMax(), max);
  EXPECT_EQ(run.stitcher.GetPlacedBounds(), cv::Rect(35, 40, 145, 105));
}

// Which matrices share pixels is part of the behaviour: a host that writes into one
// must know what else it changes, and a deep copy per frame would cost time.

#include <gtest/gtest.h>

#include "batch_files.h"
#include "flat_run.h"
#include "support/compare.h"
#include "support/scenes.h"

namespace {

bool Share(const cv::Mat& a, const cv::Mat& b) {
  return a.u != nullptr && a.u == b.u && a.data == b.data;
}

}  // namespace

TEST(Sharing, FirstFrameIsReferenceAndCurrentFrame) {
  FlatRun run(cv::Size(100, 50));
  EXPECT_TRUE(Share(inside::CurFrame(run.stitcher), inside::RefFrame(run.stitcher)));
}

TEST(Sharing, RejectedFrameLeavesTheReferenceItsOwnPixels) {
  FlatRun run(cv::Size(100, 50));
  const cv::Mat first = inside::RefFrame(run.stitcher);
  run.Take(0, 0, 0);
  EXPECT_TRUE(Share(inside::RefFrame(run.stitcher), first));
  EXPECT_FALSE(Share(inside::CurFrame(run.stitcher), first));
}

TEST(Sharing, AtLevelOneAnAcceptedFrameIsFusedInPlace) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  ASSERT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_TRUE(Share(inside::CurFrame(run.stitcher), inside::RefFrame(run.stitcher)));
  // The frame has become the block that stands in the mosaic.
  EXPECT_TRUE(SameMatrix(inside::CurFrame(run.stitcher),
                         run.stitcher.GetMosaic()(cv::Rect(80, 25, 100, 50))));
}

TEST(Sharing, AtLevelTwoTheReferenceIsTheShrunkenBlock) {
  FlatRun run(cv::Size(100, 50), 2);
  run.Take(15, 0);
  ASSERT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_FALSE(Share(inside::CurFrame(run.stitcher), inside::RefFrame(run.stitcher)));
  EXPECT_EQ(inside::CurFrame(run.stitcher).size(), cv::Size(100, 50));
  EXPECT_EQ(inside::RefFrame(run.stitcher).size(), cv::Size(50, 25));
  // The camera frame itself is as it came.
  EXPECT_TRUE(
      SameMatrix(inside::CurFrame(run.stitcher), cv::Mat(50, 100, CV_8UC3, cv::Scalar::all(101))));
}

TEST(Sharing, MosaicKeepsItsPixelsWhereItNeedNotGrow) {
  FlatRun run(cv::Size(100, 50));
  run.Take(0, 0, 0);
  const cv::Mat mosaic = run.stitcher.GetMosaic();
  run.Take(20, 0);
  ASSERT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_TRUE(Share(run.stitcher.GetMosaic(), mosaic));
  run.Take(80, 0);
  ASSERT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_FALSE(Share(run.stitcher.GetMosaic(), mosaic));
}

TEST(Sharing, MosaicAccessorIsAHeaderOnTheMosaic) {
  FlatRun run(cv::Size(100, 50));
  run.Take(0, 0, 0);
  EXPECT_TRUE(Share(run.stitcher.GetMosaic(), inside::Mosaic(run.stitcher)));
}

TEST(Sharing, BatchReferenceStartsAsTheFirstFile) {
  RandomSource random(5);
  const cv::Mat scene = scenes::Dense(random, 400, 500);
  BatchFiles files;
  files.Add(scenes::Cut(scene, cv::Point(100, 100), cv::Size(200, 160)));
  files.Add(scenes::Cut(scene, cv::Point(160, 100), cv::Size(200, 160)));
  JQImageStitching stitcher;
  std::vector<bool> shared;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus, [&] {
    shared.push_back(Share(inside::CurFrame(stitcher), inside::RefFrame(stitcher)));
  });
  BatchRun(stitcher, files.paths());
  ASSERT_EQ(stitcher.GetFrameCount(), 2);
  EXPECT_EQ(shared, (std::vector<bool>{true, false}));
}

// Where the box is as large as the frame, trimming could write into the frame's
// pixels, which may be the reference's too.
TEST(Sharing, TrimmedPictureHasItsOwnPixels) {
  BatchFiles files;
  for (int k = 0; k < 2; ++k) files.Add(cv::Mat(40, 60, CV_8UC3, cv::Scalar::all(9)));
  JQImageStitching stitcher;
  BatchRun(stitcher, files.paths());
  ASSERT_EQ(inside::CurFrame(stitcher).size(), inside::RefFrame(stitcher).size());
  EXPECT_FALSE(Share(inside::CurFrame(stitcher), inside::RefFrame(stitcher)));
  EXPECT_FALSE(Share(inside::CurFrame(stitcher), stitcher.GetMosaic()));
}

// Memory of old frames is used again, but not under a header that the host keeps.
TEST(Sharing, PicturesThatTheHostHoldsStay) {
  FlatRun run(cv::Size(100, 50));
  std::vector<cv::Mat> held;
  std::vector<cv::Mat> copies;
  const int offsets[] = {0, 30, 3, 30, -30, 2, 30};
  for (const int offset : offsets) {
    run.Take(offset, 0);
    for (const cv::Mat& picture :
         {inside::CurFrame(run.stitcher), inside::RefFrame(run.stitcher)}) {
      held.push_back(picture);
      copies.push_back(picture.clone());
    }
  }
  ASSERT_GE(run.stitcher.GetFrameCount(), 4);
  for (std::size_t k = 0; k < held.size(); ++k) EXPECT_TRUE(SameMatrix(held[k], copies[k])) << k;
}

TEST(Sharing, ReferenceAndCurrentFrameNeverBecomeOneByReuse) {
  FlatRun run(cv::Size(100, 50));
  for (int k = 0; k < 12; ++k) {
    const bool place = k % 3 == 0;
    run.Take(place ? 20 : 2, 0);
    ASSERT_EQ(run.stitcher.IsLastFrameAccepted(), place);
    EXPECT_EQ(Share(inside::CurFrame(run.stitcher), inside::RefFrame(run.stitcher)), place);
  }
}

TEST(Sharing, TrimmingLeavesTheMosaicAlone) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  const cv::Mat mosaic = run.stitcher.GetMosaic().clone();
  ASSERT_TRUE(run.stitcher.CutEdge());
  inside::CurFrame(run.stitcher).setTo(cv::Scalar::all(1));
  EXPECT_TRUE(SameMatrix(run.stitcher.GetMosaic(), mosaic));
}

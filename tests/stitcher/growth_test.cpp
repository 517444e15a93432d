// The mosaic of a live run grows in place while the stitcher alone has a header on it, and
// gives a host what it may keep.

#include <gtest/gtest.h>

#include "flat_run.h"
#include "run_state.h"
#include "support/address_limit.h"
#include "support/compare.h"
#include "support/outcome.h"

namespace {

// Where the pixels' owner is, without a header on them.
const cv::UMatData* Pixels(FlatRun& run) {
  return inside::Mosaic(run.stitcher).u;
}

}  // namespace

TEST(Growth, ThePixelsOfTheMosaicAreMovedInEveryDirection) {
  FlatRun run(cv::Size(100, 50));
  run.Take(0, 0, 0);
  const cv::UMatData* const pixels = Pixels(run);
  cv::Size size = run.stitcher.GetMosaic().size();
  ASSERT_EQ(size, cv::Size(200, 100));
  const struct {
    cv::Point offset;
    cv::Size grown;
  } rows[] = {{{80, 0}, {300, 100}},  {{0, 40}, {300, 150}},  {{-80, 0}, {300, 150}},
              {{-80, 0}, {400, 150}}, {{0, -40}, {400, 150}}, {{0, -40}, {400, 200}}};
  for (const auto& row : rows) {
    const _tagJQIMG* const record = run.Take(row.offset.x, row.offset.y);
    ASSERT_TRUE(run.stitcher.IsLastFrameAccepted());
    EXPECT_EQ(run.stitcher.GetMosaic().size(), row.grown);
    EXPECT_EQ(Pixels(run), pixels);
    EXPECT_EQ(record->pixels, run.stitcher.GetMosaic().data);
    EXPECT_EQ(record->bytesPerLine, row.grown.width * 3);
    EXPECT_TRUE(run.stitcher.GetMosaic().isContinuous());
  }
}

TEST(Growth, AHostsHeaderKeepsWhatItShows) {
  FlatRun run(cv::Size(100, 50));
  run.Take(0, 0, 0);
  {
    const cv::Mat held = run.stitcher.GetMosaic();
    const cv::Mat before = held.clone();
    run.Take(80, 0);
    EXPECT_EQ(run.stitcher.GetMosaic().size(), cv::Size(300, 100));
    EXPECT_NE(Pixels(run), held.u);
    EXPECT_TRUE(SameMatrix(held, before));
  }
  // The canvas is a host's to set.
  run.stitcher.m_resultMat = run.stitcher.GetMosaic();
  const cv::Mat before = run.stitcher.m_resultMat.clone();
  run.Take(0, 40);
  EXPECT_EQ(run.stitcher.GetMosaic().size(), cv::Size(300, 150));
  EXPECT_TRUE(SameMatrix(run.stitcher.m_resultMat, before));
  run.stitcher.m_resultMat.release();
  const cv::UMatData* const pixels = Pixels(run);
  run.Take(-80, 0);
  run.Take(-80, 0);
  EXPECT_EQ(run.stitcher.GetMosaic().size(), cv::Size(400, 150));
  EXPECT_EQ(Pixels(run), pixels);
}

TEST(Growth, TheMosaicOutlivesItsStitcher) {
  cv::Mat held, before;
  {
    FlatRun run(cv::Size(100, 50));
    run.Take(0, 0, 0);
    run.Take(80, 0);
    held = run.stitcher.GetMosaic();
    before = held.clone();
  }
  EXPECT_TRUE(SameMatrix(held, before));
}

TEST(Growth, RefusedMemoryLeavesTheRunAndTheRecord) {
  FlatRun run(cv::Size(900, 700));
  run.Take(0, 0, 0);
  run.Take(100, 50);
  ASSERT_TRUE(run.stitcher.IsLastFrameAccepted());
  const RunState before(run.stitcher);
  const cv::UMatData* const pixels = Pixels(run);
  const cv::Mat frame(700, 900, CV_8UC3, cv::Scalar::all(FlatRun::kFirstLevel + 3));
  HostRecord record(frame);
  inside::Flags(run.stitcher).offsetX = 600;
  {
    // Enough for the frame of 1.9 MB, not for 3.8 MB more of mosaic.
    const AddressLimit limit(std::size_t{3} << 20);
    if (!limit.holds()) GTEST_SKIP() << "no limit of address space here";
    EXPECT_EQ(Ending([&] { run.stitcher.Stitching(record.get(), 1, 1, 8); }),
              Outcome::kImageLibraryError);
  }
  EXPECT_EQ(run.stitcher.GetLastVerdict().cause, JQFrameCause::kCallFailed);
  inside::Flags(run.stitcher).offsetX = before.flags().offsetX;
  EXPECT_TRUE(before.IsStillThatOf(run.stitcher, RunState::kWithCurrentFrame));
  run.Take(600, 0);
  EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_EQ(run.stitcher.GetMosaic().size(), cv::Size(2700, 1400));
  EXPECT_EQ(Pixels(run), pixels);
}

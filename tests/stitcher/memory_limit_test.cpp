// The bound on the mosaic: refused before anything changes, told in the verdict.

#include <gtest/gtest.h>

#include <cstdint>

#include "flat_run.h"
#include "seen_run.h"
#include "support/scenes.h"

namespace {

// How the call ended, as its error code; 0 when it returned.
int Code(FlatRun& run, cv::Point offset) {
  cv::redirectError([](int, const char*, const char*, const char*, int, void*) { return 0; });
  int code = 0;
  try {
    run.Take(offset.x, offset.y);
  } catch (const cv::Exception& error) {
    code = error.code;
  }
  cv::redirectError(nullptr);
  return code;
}

struct Row {
  const char* name;
  cv::Point offset;     // working scale; frames of 60 x 50 in a mosaic of 120 x 100
  std::int64_t needed;  // bytes of the mosaic with the frame in it
};

const Row kRows[] = {
    {"Right", {40, 0}, 180 * 100 * 3},      {"Left", {-40, 0}, 180 * 100 * 3},
    {"Down", {0, 40}, 120 * 150 * 3},       {"Up", {0, -40}, 120 * 150 * 3},
    {"DownRight", {40, 40}, 180 * 150 * 3}, {"UpLeft", {-40, -40}, 180 * 150 * 3},
    {"UpRight", {40, -40}, 180 * 150 * 3},  {"DownLeft", {-40, 40}, 180 * 150 * 3},
};

}  // namespace

TEST(MemoryLimit, RefusesGrowthByOneByte) {
  for (const int level : {1, 2}) {
    for (const Row& row : kRows) {
      SCOPED_TRACE(row.name);
      FlatRun run(cv::Size(60, 50) * level, level);
      run.Take(0, 0, 0);
      ASSERT_EQ(run.stitcher.GetMosaic().size(), cv::Size(120, 100));
      run.stitcher.SetUndoDepth(2);
      run.stitcher.SetMemoryLimit(row.needed - 1);
      const SeenRun before(run.stitcher);
      EXPECT_EQ(Code(run, row.offset), cv::Error::StsNoMem);
      const JQFrameVerdict verdict = run.stitcher.GetLastVerdict();
      EXPECT_EQ(verdict.cause, JQFrameCause::kCallFailed);
      EXPECT_EQ(verdict.mosaicBytesNeeded, row.needed);
      EXPECT_EQ(run.stitcher.GetUndoCount(), 0);
      EXPECT_TRUE(SameMatrix(run.stitcher.GetMosaic(), before.view.mosaic));
      EXPECT_TRUE(SameMatrix(inside::RefFrame(run.stitcher), before.view.reference));
      EXPECT_EQ(run.stitcher.GetPlacedBounds(), before.view.bounds);
      EXPECT_EQ(run.stitcher.GetContentMin(), before.view.min);
      EXPECT_EQ(run.stitcher.GetContentMax(), before.view.max);
      EXPECT_EQ(run.stitcher.GetFrameCount(), 1);
      EXPECT_TRUE(run.stitcher.CutEdge());

      // With that byte it goes on.
      run.stitcher.SetMemoryLimit(row.needed);
      EXPECT_EQ(Code(run, row.offset), 0);
      EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
      EXPECT_EQ(run.stitcher.GetLastVerdict().mosaicBytesNeeded, 0);
      const cv::Mat mosaic = run.stitcher.GetMosaic();
      EXPECT_EQ(static_cast<std::int64_t>(mosaic.total() * mosaic.elemSize()), row.needed);
    }
  }
}

TEST(MemoryLimit, HoldsForTheStartOfTheMosaic) {
  FlatRun run(cv::Size(60, 50));
  run.stitcher.SetMemoryLimit(120 * 100 * 3 - 1);
  const SeenRun before(run.stitcher);
  EXPECT_EQ(Code(run, cv::Point()), cv::Error::StsNoMem);
  EXPECT_EQ(run.stitcher.GetLastVerdict().mosaicBytesNeeded, 120 * 100 * 3);
  EXPECT_TRUE(run.stitcher.GetMosaic().empty());
  EXPECT_EQ(run.stitcher.GetFrameCount(), 0);
  run.stitcher.SetMemoryLimit(120 * 100 * 3);
  EXPECT_EQ(Code(run, cv::Point()), 0);
  EXPECT_EQ(run.stitcher.GetMosaic().size(), cv::Size(120, 100));
}

// Frames that need no growth are placed at any limit, and none is none.
TEST(MemoryLimit, LeavesWhatIsThere) {
  FlatRun run(cv::Size(60, 50));
  run.Take(0, 0, 0);
  run.stitcher.SetMemoryLimit(1);
  EXPECT_EQ(Code(run, cv::Point(20, 0)), 0);
  EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_EQ(Code(run, cv::Point(40, 0)), cv::Error::StsNoMem);
  for (const std::int64_t none : {std::int64_t{0}, std::int64_t{-1}, INT64_MIN}) {
    run.stitcher.SetMemoryLimit(none);
    EXPECT_EQ(Code(run, cv::Point(40, 0)), 0);
    EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
  }
}

// A run with a refused frame in it is the run without that frame.
TEST(MemoryLimit, ARefusedFrameLeavesNoTrace) {
  RandomSource random(36);
  const cv::Mat scene = scenes::Dense(random, 500, 900);
  const cv::Size size(240, 200);
  JQImageStitching limited, control;
  const auto feed = [&](JQImageStitching& stitcher, int x, int y) {
    HostRecord record(scenes::Cut(scene, cv::Point(x, y), size));
    stitcher.Stitching(record.get(), 0, 1, 8);
  };
  for (JQImageStitching* stitcher : {&limited, &control}) {
    for (const int x : {300, 340, 300}) feed(*stitcher, x, 150);
  }
  limited.SetMemoryLimit(480 * 400 * 3);
  cv::redirectError([](int, const char*, const char*, const char*, int, void*) { return 0; });
  EXPECT_THROW(feed(limited, 150, 150), cv::Exception);
  cv::redirectError(nullptr);
  EXPECT_EQ(limited.GetLastVerdict().mosaicBytesNeeded, 720 * 400 * 3);
  for (JQImageStitching* stitcher : {&limited, &control}) {
    feed(*stitcher, 340, 160);
    EXPECT_TRUE(stitcher->IsLastFrameAccepted());
  }
  ExpectSameRun(limited, SeenRun(control));
}

// Thousands of frames whose mosaic does not grow: once warm, the number of heap blocks
// stays what it is and the resident memory flat.

#include <gtest/gtest.h>

#include <QMetaObject>
#include <QTemporaryDir>
#include <opencv2/imgcodecs.hpp>
#include <string>

#include "heap_use.h"
#include "support/small_run.h"

namespace {

// A list that is kept from call to call may still take more memory once in a while.
// One block lost in every thirty calls is more than this.
constexpr long kBlocks = 3;
constexpr std::size_t kResidentBytes = std::size_t{3} << 20;

// Two periods of `steps` calls each, after a warm-up.
template <class Step>
void ExpectFlatMemory(int warmUp, int steps, Step&& step) {
  for (int k = 0; k < warmUp; ++k) step();
  const HeapUse warm = HeapUse::Now();
  ASSERT_GT(warm.residentBytes, 0u);
  for (int k = 0; k < steps; ++k) step();
  const HeapUse later = HeapUse::Now();
  EXPECT_LE(later.blocks, warm.blocks + kBlocks);
  EXPECT_LE(later.residentBytes, warm.residentBytes + kResidentBytes);
  std::printf("heap blocks %ld, then %ld; resident %zu kB, then %zu kB\n", warm.blocks,
              later.blocks, warm.residentBytes >> 10, later.residentBytes >> 10);
}

class Soak : public ::testing::TestWithParam<int> {
 protected:
  Soak() { cv::setNumThreads(1); }
};

}  // namespace

TEST_P(Soak, TrackedFramesLeaveMemoryFlat) {
  SmallRun run(GetParam(), 3);
  int placed = 0;
  ExpectFlatMemory(200, 1600, [&] { placed += run.Step(); });
  EXPECT_GT(placed, 1200);
  EXPECT_EQ(run.stitcher.GetMosaic().size(), cv::Size(400, 320));
}

TEST_P(Soak, FramesLeftOutLeaveMemoryFlat) {
  SmallRun run(GetParam(), 4, SmallRun::Steps::kTooSmall);
  int placed = 0;
  ExpectFlatMemory(200, 1600, [&] { placed += run.Step(); });
  EXPECT_EQ(placed, 1);  // the first frame of the run
}

INSTANTIATE_TEST_SUITE_P(Modes, Soak, ::testing::Values(0, 1), [](const auto& mode) {
  return mode.param == 0 ? std::string("Overlap") : std::string("Motion");
});

TEST(BatchSoak, RunsOfOneStitcherLeaveMemoryFlat) {
  cv::setNumThreads(1);
  const SmallRun frames(0, 5);
  QTemporaryDir folder;
  JQImageStitching stitcher;
  for (int k = 0; k < 4; ++k) {
    const QString path = folder.filePath(QString("%1.bmp").arg(k));
    ASSERT_TRUE(cv::imwrite(path.toStdString(), frames.frames()[static_cast<std::size_t>(k)]));
    stitcher.m_fileList.append(path);
  }
  int finished = 0;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessFinished,
                   [&](void* mosaic) { finished += mosaic != nullptr; });
  ExpectFlatMemory(30, 300, [&] {
    QMetaObject::invokeMethod(&stitcher, "slotStartStitching", Qt::DirectConnection);
  });
  EXPECT_EQ(finished, 330);
  EXPECT_GT(stitcher.GetFrameCount(), 2);
}

TEST(StitcherSoak, OneStitcherAfterAnotherLeavesMemoryFlat) {
  cv::setNumThreads(1);
  ExpectFlatMemory(20, 120, [] {
    SmallRun run(0, 6);
    for (int k = 0; k < 4; ++k) run.Step();
    run.stitcher.CutEdge();
  });
}

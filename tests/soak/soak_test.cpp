// Thousands of frames whose mosaic does not grow, and hundreds of growths: once warm, the
// number of heap blocks stays what it is, the resident memory and the address space flat.

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
constexpr std::size_t kAddressBytes = std::size_t{8} << 20;

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
  EXPECT_LE(later.addressBytes, warm.addressBytes + kAddressBytes);
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

// Each growth moves the mosaic's pages; with a header held across every third one it is
// copied instead. What a run takes, 1 MB at its end, has to be given back with it.
TEST(StitcherSoak, MosaicsThatGrowLeaveMemoryFlat) {
  cv::setNumThreads(1);
  constexpr int kGrowths = 12;
  ExpectFlatMemory(10, 60, [] {
    const cv::Mat frame(40, 50, CV_8UC3, cv::Scalar::all(5));
    JQStitchingAlgorithm engine;
    cv::Mat mosaic, region, held;
    cv::Point boxMin, boxMax, position;
    stitchflags flags;
    engine.StitchingImage_offset(0, frame, frame, frame.clone(), boxMin, boxMax, mosaic, flags);
    ASSERT_EQ(mosaic.size(), cv::Size(100, 80));
    for (int k = 0; k < kGrowths; ++k) {
      // To each corner in turn.
      flags.positionX = k % 2 == 0 ? 10 : mosaic.cols - 60;
      flags.positionY = k % 4 < 2 ? 10 : mosaic.rows - 50;
      flags.offsetX = k % 2 == 0 ? -20 : 20;
      flags.offsetY = k % 4 < 2 ? -20 : 20;
      held = k % 3 == 0 ? mosaic : cv::Mat();
      const cv::Size before = mosaic.size();
      engine.StitchingImage_imageblend(mosaic, frame.clone(), flags, boxMin, boxMax, {}, boxMin,
                                       boxMax, position, mosaic, region);
      ASSERT_EQ(mosaic.size(), before + frame.size());
    }
  });
}

// Two stitchers on two threads share nothing that one of them could disturb.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "picture/filter_rounding.h"
#include "support/compare.h"
#include "support/engines.h"
#include "support/small_run.h"

namespace {

/// Lets two threads go on at the same moment.
class Gate {
 public:
  void Meet() {
    --m_missing;
    while (m_missing > 0) {
    }
  }

 private:
  std::atomic<int> m_missing{2};
};

// The image library makes its table of matrix operations on first use, under a lock of
// its own that the sanitizer cannot see.
void WarmUpImageLibrary() {
  const cv::Mat zeros = cv::Mat::zeros(1, 1, CV_8U);
}

template <class First, class Second>
void RunAtOnce(First&& first, Second&& second) {
  WarmUpImageLibrary();
  Gate gate;
  std::thread other([&] {
    gate.Meet();
    second();
  });
  gate.Meet();
  first();
  other.join();
}

void Step(SmallRun& run, int frames) {
  for (int k = 0; k < frames; ++k) run.Step();
}

void ExpectSameRun(const SmallRun& run, const SmallRun& alone) {
  EXPECT_GT(run.stitcher.GetFrameCount(), 2);
  EXPECT_EQ(run.stitcher.GetFrameCount(), alone.stitcher.GetFrameCount());
  EXPECT_EQ(run.stitcher.GetPlacedBounds(), alone.stitcher.GetPlacedBounds());
  EXPECT_TRUE(SameMatrix(run.stitcher.GetMosaic(), alone.stitcher.GetMosaic()));
}

}  // namespace

// The very first kernels of the process too: the vector level is chosen and the image
// library's rounding found out while both threads want them.
TEST(Threads, TwoStitchersOnTwoThreadsWorkAsEachAlone) {
  constexpr int kFrames = 10;
  SmallRun first(0, 1), second(1, 2);
  RunAtOnce([&] { Step(first, kFrames); }, [&] { Step(second, kFrames); });

  SmallRun firstAlone(0, 1), secondAlone(1, 2);
  Step(firstAlone, kFrames);
  Step(secondAlone, kFrames);
  ExpectSameRun(first, firstAlone);
  ExpectSameRun(second, secondAlone);
}

TEST(Threads, TwoEnginesMayStartTheirFirstKernelAtOnce) {
  RandomSource random(7);
  const cv::Mat grey = pictures::Texture(random, 150, 140, CV_8UC1);
  const auto corners = [&](std::vector<cv::Point>& found) {
    JQStitchingAlgorithm engine;
    engine.FindHarrisCornerCoordianteFun(grey, found);
  };
  std::vector<cv::Point> first, second, alone;
  RunAtOnce([&] { corners(first); }, [&] { corners(second); });
  corners(alone);
  EXPECT_FALSE(alone.empty());
  EXPECT_EQ(first, alone);
  EXPECT_EQ(second, alone);
}

// What is found out about the image library holds for one setting of
// cv::useOptimized, however another thread changes it meanwhile.
TEST(Threads, RoundingIsFoundOutWhileAnotherThreadChangesTheSetting) {
  const bool usual = cv::useOptimized();
  std::atomic<bool> done{false};
  RunAtOnce(
      [&] {
        for (int k = 0; k < 4; ++k) {
          jqstitching::LibraryFilterRounding();
          JQStitchingAlgorithm engine;
          RandomSource random(8);
          std::vector<cv::Point> corners;
          engine.FindHarrisCornerCoordianteFun(pictures::Texture(random, 100, 100, CV_8UC1),
                                               corners);
        }
        done = true;
      },
      [&] {
        for (int k = 0; !done; ++k) cv::setUseOptimized(k % 2 == 0);
      });
  RandomSource random(9);
  const cv::Mat picture = pictures::Texture(random, 150, 140, CV_8UC3);
  for (const bool optimized : {true, false}) {
    cv::setUseOptimized(optimized);
    JQStitchingAlgorithm engine;
    reference::Algorithm twin;
    float definition = 0, expected = 0;
    engine.CalacOverLapImageDefinition(picture, picture * 0.7, definition);
    twin.CalacOverLapImageDefinition(picture, picture * 0.7, expected);
    EXPECT_EQ(definition, expected) << "optimized: " << optimized;
  }
  cv::setUseOptimized(usual);
}

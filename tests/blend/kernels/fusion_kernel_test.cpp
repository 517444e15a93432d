#include <gtest/gtest.h>

#include "black_patterns.h"
#include "blend/kernels/fusion.h"
#include "reference/algorithm.h"
#include "support/compare.h"
#include "support/guarded_matrix.h"
#include "support/outcome.h"
#include "support/property_test.h"

using jqstitching::FusionScratch;

namespace {

class FusionKernel : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(FusionKernel);

int AnyType(RandomSource& random) {
  return random.OneIn(3) ? CV_8UC1 : CV_8UC3;
}

TEST_P(FusionKernel, WeightsEqualTheTwin) {
  FusionScratch scratch;
  Repeat(150, [&scratch](RandomSource& random) {
    const int rows = random.Size(120), cols = random.Size(260), type = AnyType(random);
    const GuardedMatrix old(random, black_patterns::Picture(random, rows, cols, type));
    const GuardedMatrix frame(random, black_patterns::Picture(random, rows, cols, type));
    reference::Algorithm twin;
    cv::Mat wanted;
    twin.WeightofTwoAreaFun(old.View(), frame.View(), wanted);
    EXPECT_TRUE(
        SameMatrix(jqstitching::OldContentWeight(old.View(), frame.View(), scratch), wanted));
    EXPECT_TRUE(old.Untouched());
    EXPECT_TRUE(frame.Untouched());
  });
}

TEST_P(FusionKernel, FusedPixelsEqualTheTwin) {
  FusionScratch scratch;
  Repeat(150, [&scratch](RandomSource& random) {
    const int rows = random.Size(120), cols = random.Size(260), type = AnyType(random);
    const GuardedMatrix old(random, black_patterns::Picture(random, rows, cols, type));
    const GuardedMatrix frame(random, black_patterns::Picture(random, rows, cols, type));
    reference::Algorithm twin;
    cv::Mat wanted;
    twin.TwoImageFusion(old.View(), frame.View().clone(), wanted);
    const bool writeBack = random.OneIn(2);
    cv::Mat oldView = old.View(), frameView = frame.View();
    jqstitching::FuseImages(oldView, frameView, writeBack, scratch);
    EXPECT_TRUE(SameMatrix(frameView, wanted));
    EXPECT_TRUE(frame.GuardsIntact());
    if (writeBack) {
      EXPECT_TRUE(SameMatrix(oldView, wanted));
      EXPECT_TRUE(old.GuardsIntact());
    } else {
      EXPECT_TRUE(old.Untouched());
    }
  });
}

// A host may pass a frame that is a view of the mosaic itself: both count as they
// were on entry.
TEST_P(FusionKernel, SharedMemoryCountsAsOnEntry) {
  FusionScratch scratch;
  Repeat(100, [&scratch](RandomSource& random) {
    const int rows = random.Size(40), cols = random.Size(90), type = AnyType(random);
    const int dx = random.Int(0, cols), dy = random.Int(0, rows);
    cv::Mat whole = black_patterns::Picture(random, rows + dy, cols + dx, type);
    const bool mirrored = random.OneIn(2);
    cv::Mat old = whole(cv::Rect(mirrored ? dx : 0, dy, cols, rows));
    cv::Mat frame = whole(cv::Rect(mirrored ? 0 : dx, 0, cols, rows));
    reference::Algorithm twin;
    cv::Mat fused;
    twin.TwoImageFusion(old.clone(), frame.clone(), fused);
    cv::Mat wanted = whole.clone();
    const bool writeBack = random.OneIn(2);
    fused.copyTo(wanted(cv::Rect(mirrored ? 0 : dx, 0, cols, rows)));
    if (writeBack) fused.copyTo(wanted(cv::Rect(mirrored ? dx : 0, dy, cols, rows)));
    jqstitching::FuseImages(old, frame, writeBack, scratch);
    EXPECT_TRUE(SameMatrix(whole, wanted));
  });
}

TEST(FusionPair, OtherPairsAreRefusedUntouched) {
  FusionScratch scratch;
  RandomSource random(TestSeed());
  const cv::Mat grey = pictures::Noise(random, 5, 7, CV_8UC1);
  for (const cv::Mat& other :
       {pictures::Noise(random, 5, 7, CV_8UC3), pictures::Noise(random, 5, 8, CV_8UC1)}) {
    cv::Mat old = grey.clone(), frame = other.clone();
    EXPECT_EQ(Ending([&] { jqstitching::FuseImages(old, frame, true, scratch); }),
              Outcome::kImageLibraryError);
    EXPECT_TRUE(SameMatrix(old, grey));
    EXPECT_TRUE(SameMatrix(frame, other));
  }
  cv::Mat four = pictures::Noise(random, 5, 7, CV_8UC4);
  EXPECT_EQ(Ending([&] { jqstitching::FuseImages(four, four, true, scratch); }),
            Outcome::kImageLibraryError);
}

}  // namespace

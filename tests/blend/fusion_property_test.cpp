#include <gtest/gtest.h>

#include "support/engine_pair.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

class FusionProperty : public PropertyTest {
 protected:
  static int AnyType(RandomSource& random) {
    if (random.OneIn(30)) return random.OneIn(2) ? CV_8UC4 : CV_8UC2;
    return random.OneIn(3) ? CV_8UC1 : CV_8UC3;
  }
  // Old content with its black parts where a mosaic has them: bands along some
  // sides, holes, or anywhere.
  static cv::Mat OldBlock(RandomSource& random, int rows, int cols, int type) {
    cv::Mat block = pictures::Any(random, rows, cols, type);
    if (random.OneIn(2)) {
      block = pictures::Texture(random, rows, cols, type);
      const cv::Rect content{random.Int(0, cols - 1), random.Int(0, rows - 1), random.Int(1, cols),
                             random.Int(1, rows)};
      cv::Mat kept = cv::Mat::zeros(rows, cols, type);
      const cv::Rect inside = content & cv::Rect(0, 0, cols, rows);
      block(inside).copyTo(kept(inside));
      block = kept;
    }
    return block;
  }
  static void Compare(RandomSource& random, EnginePair& engines, const cv::Mat& oldPicture,
                      const cv::Mat& newPicture) {
    const GuardedMatrix oldBlock(random, oldPicture);
    const GuardedMatrix frame(random, newPicture);
    const GuardedMatrix frameTwin = frame.Twin();
    SCOPED_TRACE(::testing::Message() << oldPicture.rows << " rows x " << oldPicture.cols
                                      << " columns, type " << oldPicture.type());
    cv::Mat weight[2];
    const Outcome library = Ending(
        [&] { engines.library.WeightofTwoAreaFun(oldBlock.View(), frame.View(), weight[0]); });
    const Outcome twin = Ending(
        [&] { engines.twin.WeightofTwoAreaFun(oldBlock.View(), frameTwin.View(), weight[1]); });
    EXPECT_EQ(library, twin);
    EXPECT_TRUE(SameMatrix(weight[0], weight[1]));
    EXPECT_TRUE(frame.Untouched());

    cv::Mat fused[2];
    const Outcome fusion =
        Ending([&] { engines.library.TwoImageFusion(oldBlock.View(), frame.View(), fused[0]); });
    Ending([&] { engines.twin.TwoImageFusion(oldBlock.View(), frameTwin.View(), fused[1]); });
    EXPECT_EQ(fusion, twin);
    EXPECT_TRUE(SameMatrix(fused[0], fused[1]));
    EXPECT_TRUE(SameMatrix(frame.View(), frameTwin.View()));
    if (fusion == Outcome::kReturned) {
      EXPECT_EQ(fused[0].data, frame.View().data);
    }
    EXPECT_TRUE(oldBlock.Untouched());
    EXPECT_TRUE(frame.GuardsIntact());
  }
};
JQ_AT_EVERY_CPU_LEVEL(FusionProperty);

TEST_P(FusionProperty, EqualsTheTwin) {
  Repeat(500, [](RandomSource& random) {
    EnginePair engines;
    const int rows = random.Size(120);
    const int cols = random.Size(160);
    const int type = AnyType(random);
    const bool differs = random.OneIn(25);
    const cv::Mat old = OldBlock(random, rows, cols, type);
    const int frameRows = differs ? random.Size(120) : rows;
    const int frameType = differs ? AnyType(random) : type;
    Compare(random, engines, old, pictures::Any(random, frameRows, cols, frameType));
  });
}

// One engine and one size, as in a run: frames with and without black pixels take
// turns, and what is remembered of one must not show in another.
TEST_P(FusionProperty, EqualsTheTwinFrameAfterFrame) {
  Repeat(30, [](RandomSource& random) {
    EnginePair engines;
    int rows = random.Int(1, 130);
    int cols = random.Int(1, 130);
    for (int k = 0; k < 8 && !HasFailure(); ++k) {
      if (random.OneIn(4)) rows = random.Int(1, 130);
      if (random.OneIn(4)) cols = random.Int(1, 130);
      const int type = random.OneIn(4) ? CV_8UC1 : CV_8UC3;
      const cv::Mat frame = random.OneIn(2) ? pictures::Texture(random, rows, cols, type)
                                            : pictures::Any(random, rows, cols, type);
      Compare(random, engines, OldBlock(random, rows, cols, type), frame);
    }
  });
}

// Distances grow up to the frame's middle: large blocks, few black pixels.
TEST_P(FusionProperty, EqualsTheTwinOnLargeBlocks) {
  Repeat(3, [](RandomSource& random) {
    EnginePair engines;
    const int rows = random.Int(300, 700);
    const int cols = random.Int(300, 900);
    const int type = random.OneIn(3) ? CV_8UC1 : CV_8UC3;
    cv::Mat old = OldBlock(random, rows, cols, type);
    if (random.OneIn(2)) {
      old = pictures::Flat(rows, cols, type, random.Int(1, 255));
      old(cv::Rect{random.Int(0, cols - 1), random.Int(0, rows - 1), 1, 1}).setTo(0);
    }
    cv::Mat frame = pictures::Flat(rows, cols, type, random.Int(3, 255));
    if (random.OneIn(2)) pictures::BlackHoles(random, frame);
    Compare(random, engines, old, frame);
  });
}

}  // namespace

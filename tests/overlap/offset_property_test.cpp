#include <gtest/gtest.h>

#include <vector>

#include "support/engine_pair.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

// What one engine's offset driver reads and writes.
struct Side {
  std::vector<GuardedMatrix> frames;
  cv::Point minPoint = cv::Point(-1, -2);
  cv::Point maxPoint = cv::Point(-3, -4);
  cv::Mat mosaic;
  stitchflags flags;
};

template <class Engine>
Outcome Call(Engine& engine, Side& side, int frameIndex, const int (&choice)[3]) {
  return Ending([&] {
    engine.StitchingImage_offset(frameIndex, side.frames[choice[0]].View(),
                                 side.frames[choice[1]].View(), side.frames[choice[2]].View(),
                                 side.minPoint, side.maxPoint, side.mosaic, side.flags);
  });
}

class OffsetProperty : public PropertyTest {
 protected:
  static void ExpectSame(const Side& one, const Side& two) {
    EXPECT_EQ(one.minPoint, two.minPoint);
    EXPECT_EQ(one.maxPoint, two.maxPoint);
    EXPECT_TRUE(SameMatrix(one.mosaic, two.mosaic));
    EXPECT_EQ(one.flags, two.flags);
    for (std::size_t k = 0; k < one.frames.size(); ++k) {
      EXPECT_TRUE(SameMatrix(one.frames[k].View(), two.frames[k].View())) << "frame " << k;
      EXPECT_TRUE(one.frames[k].GuardsIntact());
    }
  }
};
JQ_AT_EVERY_CPU_LEVEL(OffsetProperty);

// Three frames in all roles, the same one in several roles included; one-channel
// frames change under the motion test, and the run goes on with what they are.
TEST_P(OffsetProperty, EqualsTheTwinCallAfterCall) {
  Repeat(40, [](RandomSource& random) {
    EnginePair engines;
    Side one;
    Side two;
    const int type = random.OneIn(2) ? CV_8UC1 : CV_8UC3;
    const int rows = random.OneIn(3) ? random.Size(90) : random.Int(82, 200);
    const int cols = random.OneIn(3) ? random.Size(90) : random.Int(82, 200);
    const cv::Mat scene = pictures::Any(random, rows + 40, cols + 40, type);
    for (int k = 0; k < 3; ++k) {
      cv::Mat frame = scene(cv::Rect{random.Int(0, 40), random.Int(0, 40), cols, rows}).clone();
      if (random.OneIn(5)) frame = pictures::Any(random, rows, cols, type);
      if (random.OneIn(25)) frame = pictures::Any(random, rows + 1, cols, type);
      if (random.OneIn(25)) frame = pictures::Any(random, rows, cols, CV_8UC1);
      one.frames.emplace_back(random, frame);
      two.frames.push_back(one.frames.back().Twin());
    }
    for (int call = 0; call < 5; ++call) {
      if (call == 0 || random.OneIn(4))
        engines.RandomParameters(random, random.OneIn(9) ? -1 : 1, 8);
      const int choice[3] = {random.Int(0, 2), random.Int(0, 2), random.Int(0, 2)};
      const int frameIndex = call == 0 && !random.OneIn(8) ? 0 : random.OneIn(6) ? 0 : call;
      const Outcome library = Call(engines.library, one, frameIndex, choice);
      const Outcome twin = Call(engines.twin, two, frameIndex, choice);
      SCOPED_TRACE(::testing::Message()
                   << "call " << call << ", index " << frameIndex << ", frame " << cols << " x "
                   << rows << ", level " << engines.twin.m_nDetectLevel << ", mode "
                   << engines.twin.m_nOverlapMode);
      EXPECT_EQ(library, twin);
      ExpectSame(one, two);
      // After an error the values in force may differ: the next call sets them anew.
      if (library == Outcome::kReturned) {
        EXPECT_TRUE(engines.SameMembers());
      }
      if (HasFailure()) return;
      if (random.OneIn(2)) {
        // As after an accepted frame, or a shift that reaches far.
        const cv::Point shift = random.OneIn(2)
                                    ? cv::Point(0, 0)
                                    : cv::Point{random.Int(-cols, cols), random.Int(-rows, rows)};
        for (Side* side : {&one, &two}) {
          side->flags.offsetX = shift.x;
          side->flags.offsetY = shift.y;
        }
      }
    }
  });
}

}  // namespace

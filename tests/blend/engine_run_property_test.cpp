#include <gtest/gtest.h>

#include <algorithm>

#include "support/engine_pair.h"
#include "support/guarded_matrix.h"
#include "support/property_test.h"

namespace {

// One engine's run: what a stitcher keeps between the calls of the engine.
struct EngineRun {
  cv::Mat reference;
  cv::Mat previous;
  cv::Mat mosaic;
  cv::Mat region;
  cv::Point boxMin;
  cv::Point boxMax;

  template <class Engine>
  Outcome Judge(Engine& engine, int frameIndex, const cv::Mat& current) {
    return Ending([&] {
      engine.StitchingImage_offset(frameIndex, reference, previous, current, boxMin, boxMax, mosaic,
                                   engine.m_stitchFlags);
    });
  }
  template <class Engine>
  Outcome Place(Engine& engine, const cv::Mat& current) {
    return Ending([&] {
      const cv::Point oldMin = boxMin;
      const cv::Point oldMax = boxMax;
      cv::Point position;
      engine.StitchingImage_imageblend(mosaic, current, engine.m_stitchFlags, oldMin, oldMax,
                                       cv::Point(), boxMin, boxMax, position, mosaic, region);
      engine.m_stitchFlags.positionX = position.x;
      engine.m_stitchFlags.positionY = position.y;
      engine.m_stitchFlags.offsetX = 0;
      engine.m_stitchFlags.offsetY = 0;
    });
  }
};

class EngineRunProperty : public PropertyTest {
 protected:
  static void ExpectSame(const EngineRun& one, const EngineRun& two, const EnginePair& engines) {
    EXPECT_TRUE(SameMatrix(one.mosaic, two.mosaic));
    EXPECT_TRUE(SameMatrix(one.region, two.region));
    EXPECT_TRUE(SameMatrix(one.reference, two.reference));
    EXPECT_TRUE(SameMatrix(one.previous, two.previous));
    EXPECT_EQ(one.boxMin, two.boxMin);
    EXPECT_EQ(one.boxMax, two.boxMax);
    EXPECT_EQ(engines.library.m_stitchFlags, engines.twin.m_stitchFlags);
  }
};
JQ_AT_EVERY_CPU_LEVEL(EngineRunProperty);

// A camera walks over a scene; frames are judged and registered, and placed when
// they registered well or, now and then, at random. Dark patches, flat frames,
// returns and changes of the tuning values come on the way.
TEST_P(EngineRunProperty, EqualsTheTwinAfterEveryFrame) {
  Repeat(6, [](RandomSource& random) {
    EnginePair engines;
    const int level = random.OneIn(2) ? 1 : random.Int(2, 3);
    const int mode = random.Int(0, 1);
    const int budget = random.OneIn(2) ? 8 : random.Int(-7, 20);
    const int presets = random.Int(0, 1);
    engines.Both([&](auto& engine) { engine.SetParameter(level, budget, mode, presets); });
    const int type = random.OneIn(3) ? CV_8UC1 : CV_8UC3;
    const int rows = random.Int(90, 130) * level;
    const int cols = random.Int(90, 150) * level;
    const cv::Mat scene = pictures::Texture(random, 3 * rows, 3 * cols, type);
    const int threads = cv::getNumThreads();

    EngineRun one;
    EngineRun two;
    cv::Point camera(cols, rows);
    for (int k = 0; k < 9; ++k) {
      cv::Mat frame = scene(cv::Rect(camera.x, camera.y, cols, rows)).clone();
      if (random.OneIn(6)) pictures::BlackHoles(random, frame);
      if (random.OneIn(9)) frame.setTo(random.Int(0, 255));
      if (random.OneIn(25)) frame = frame(cv::Rect(0, 0, cols - 1, rows)).clone();
      const cv::Mat twinFrame = frame.clone();
      SCOPED_TRACE(::testing::Message() << "frame " << k << " of " << cols << " x " << rows
                                        << ", type " << type << ", level " << level);
      if (k == 0) {
        one.reference = one.previous = frame;
        two.reference = two.previous = twinFrame;
      } else {
        // The number of the image library's threads is nobody's business.
        cv::setNumThreads(random.Int(0, 2));
        const Outcome library = one.Judge(engines.library, k - 1, frame);
        cv::setNumThreads(1);
        EXPECT_EQ(library, two.Judge(engines.twin, k - 1, twinFrame));
        ExpectSame(one, two, engines);
        if (library == Outcome::kReturned) {
          EXPECT_TRUE(engines.SameMembers());
          EXPECT_TRUE(SameMatrix(frame, twinFrame));
          stitchflags& flags = engines.library.m_stitchFlags;
          const bool registered = flags.matchCount >= 11;
          const bool anywhere = random.OneIn(4);
          if (anywhere) {
            flags.offsetX = random.Int(-cols / level, cols / level);
            flags.offsetY = random.Int(-rows / level, rows / level);
            engines.twin.m_stitchFlags = flags;
          }
          if (registered || anywhere) {
            const Outcome placed = one.Place(engines.library, frame);
            EXPECT_EQ(placed, two.Place(engines.twin, twinFrame));
            EXPECT_TRUE(SameMatrix(frame, twinFrame));
            if (placed == Outcome::kReturned) {
              one.reference = frame;
              two.reference = twinFrame;
            }
            ExpectSame(one, two, engines);
          }
        }
        one.previous = frame;
        two.previous = twinFrame;
      }
      cv::setNumThreads(threads);
      if (HasFailure()) return;
      camera.x = std::min(std::max(camera.x + random.Int(-cols / 2, cols / 2), 0), 2 * cols);
      camera.y = std::min(std::max(camera.y + random.Int(-rows / 2, rows / 2), 0), 2 * rows);
    }
  });
}

}  // namespace

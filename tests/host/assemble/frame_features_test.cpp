// Features found once give what the engine gives for two pictures.
#include "host/assemble/frame_features.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>
#include <random>

#include "host/assemble/frame_set.h"
#include "jqstitch/scene_frames.h"

namespace jqhost_test {
namespace {

using jqhost::FindFeatures;
using jqhost::MeasureShift;
using jqhost::PairMeasure;

PairMeasure Measure(JQStitchingAlgorithm& engine, const cv::Mat& first, const cv::Mat& second) {
  return MeasureShift(engine, FindFeatures(engine, first), FindFeatures(engine, second));
}

TEST(FrameFeaturesTest, ShiftAndMatchesAreThoseOfTheEngine) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const cv::Mat scene = jqstitch_test::MakeScene({900, 700});
  for (const int level : {1, 2, 3}) {
    jqhost::FrameSetSettings settings;
    settings.detectLevel = level;
    JQStitchingAlgorithm engine = jqhost::MakeEngine(settings);
    for (int round = 0; round < 8; ++round) {
      const auto cut = [&] {
        const cv::Rect place(static_cast<int>(random() % 500), static_cast<int>(random() % 400),
                             320, 240);
        cv::Mat frame = scene(place).clone(), noise(frame.size(), frame.type());
        cv::theRNG().state = random();
        cv::randn(noise, 0, 3);
        frame += noise;
        if (round % 4 == 3) cv::cvtColor(frame, frame, cv::COLOR_BGR2GRAY);
        return frame;
      };
      const cv::Mat first = cut(), second = cut();
      int x = 0, y = 0, count = 0;
      engine.ImageMosaicFun(first, second, x, y, count);
      const PairMeasure measure = Measure(engine, first, second);
      EXPECT_EQ(measure.shift, cv::Point(x, y)) << "level " << level;
      EXPECT_EQ(measure.matches, count) << "level " << level;
      EXPECT_GE(measure.matched, measure.matches);
    }
  }
}

TEST(FrameFeaturesTest, FramesWithoutCornersGiveNothing) {
  JQStitchingAlgorithm engine;
  const cv::Mat flat(240, 320, CV_8UC3, cv::Scalar::all(90));
  const cv::Mat scene = jqstitch_test::MakeScene({320, 240});
  for (const PairMeasure& measure :
       {Measure(engine, flat, scene), Measure(engine, scene, flat), Measure(engine, flat, flat)}) {
    EXPECT_EQ(measure.shift, cv::Point());
    EXPECT_EQ(measure.matches, 0);
    EXPECT_EQ(measure.matched, 0);
  }
}

TEST(FrameFeaturesTest, TheFineShiftIsTheMeanOfWhatAgrees) {
  // The engine's shift is even at level 1; the frames lie an odd number apart.
  const cv::Mat scene = jqstitch_test::MakeScene({500, 300});
  JQStitchingAlgorithm engine;
  const PairMeasure measure = Measure(engine, scene({0, 0, 320, 240}), scene({101, 33, 320, 240}));
  EXPECT_EQ(measure.shift.x % 2, 0);
  EXPECT_GE(measure.matches, 20);
  EXPECT_NEAR(measure.fineShift.x, 101, 0.5);
  EXPECT_NEAR(measure.fineShift.y, 33, 0.5);
}

}  // namespace
}  // namespace jqhost_test

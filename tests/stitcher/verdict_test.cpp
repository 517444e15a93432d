// The verdict on the newest frame in real runs, live and batch.

#include <gtest/gtest.h>

#include <QFile>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "batch_files.h"
#include "support/host_record.h"
#include "support/outcome.h"
#include "support/scenes.h"
#include "support/stitcher_access.h"

namespace {

const cv::Size kFrame(240, 200);

class Verdict : public ::testing::Test {
 protected:
  Verdict() {
    RandomSource random(3);
    m_scene = scenes::Dense(random, 500, 900);
    m_quiet = scenes::Quiet(random, 500, 900);
  }
  cv::Mat At(int x, int y = 150) const { return scenes::Cut(m_scene, cv::Point(x, y), kFrame); }
  cv::Mat QuietAt(int x) const { return scenes::Cut(m_quiet, cv::Point(x, 150), kFrame); }
  static cv::Mat Flat(int level) { return cv::Mat(kFrame, CV_8UC3, cv::Scalar::all(level)); }

  JQFrameVerdict Feed(const cv::Mat& frame, int mode = 0, int level = 1) {
    HostRecord record(frame);
    stitcher.Stitching(record.get(), mode, level, 8);
    return stitcher.GetLastVerdict();
  }

  // By the engine's single steps.
  static int PairsBetween(cv::Mat first, cv::Mat second) {
    JQStitchingAlgorithm engine;
    engine.SetParameter(1, 8, 0, 1);
    std::vector<cv::Point> corners[2], pairs;
    cv::Mat descriptors[2];
    cv::Mat* frames[] = {&first, &second};
    for (int i = 0; i < 2; ++i) {
      engine.JudgeImageChannel(*frames[i], *frames[i]);
      cv::cvtColor(*frames[i], *frames[i], cv::COLOR_RGB2GRAY);
      engine.FindHarrisCornerCoordianteFun(*frames[i], corners[i]);
      engine.NoRotaFeatureDescriber(*frames[i], corners[i], descriptors[i]);
    }
    engine.CalacDistanceIndexFun(descriptors[0], descriptors[1], pairs);
    return static_cast<int>(pairs.size());
  }

  JQImageStitching stitcher;
  cv::Mat m_scene, m_quiet;
};

}  // namespace

TEST_F(Verdict, BeforeARunThereIsNone) {
  const JQFrameVerdict verdict = stitcher.GetLastVerdict();
  EXPECT_EQ(verdict.cause, JQFrameCause::kNone);
  EXPECT_FALSE(verdict.registered);
  EXPECT_TRUE(std::isnan(verdict.shiftShare));
  EXPECT_TRUE(std::isnan(verdict.brightness));
  EXPECT_TRUE(std::isnan(verdict.motionLimit));
}

TEST_F(Verdict, OfTheFirstFrame) {
  const JQFrameVerdict verdict = Feed(At(100));
  EXPECT_EQ(verdict.cause, JQFrameCause::kFirstFrame);
  EXPECT_FALSE(verdict.registered);
  EXPECT_TRUE(stitcher.IsLastFrameAccepted());
}

// A placed live frame zeroes the offset in the record; the verdict keeps it.
TEST_F(Verdict, OfAPlacedFrame) {
  Feed(At(100));
  const JQFrameVerdict verdict = Feed(At(160, 160));
  ASSERT_EQ(verdict.cause, JQFrameCause::kPlaced);
  EXPECT_TRUE(verdict.registered);
  EXPECT_EQ(verdict.offset, cv::Point(60, 10));
  EXPECT_EQ(stitcher.GetStitchFlags().offsetX, 0);
  EXPECT_FLOAT_EQ(verdict.shiftShare, 0.25f);
  EXPECT_EQ(verdict.matchCount, stitcher.GetStitchFlags().matchCount);
  EXPECT_EQ(verdict.pairCount, PairsBetween(At(100), At(160, 160)));
  EXPECT_EQ(verdict.brightnessLimit, 40.0f);
  EXPECT_EQ(verdict.definitionLimit, 15.0f);
  EXPECT_LT(verdict.brightness, 40.0f);
  EXPECT_LT(verdict.definition, 15.0f);
  EXPECT_TRUE(std::isnan(verdict.motion));
  EXPECT_TRUE(std::isnan(verdict.motionLimit));
}

// The overlap test of the second frame compares it with the first one as they are.
TEST_F(Verdict, TellsTheMeasuresOfTheOverlapTest) {
  Feed(At(100));
  const JQFrameVerdict verdict = Feed(At(160));
  JQStitchingAlgorithm engine;
  float bright = 0, definition = 0;
  cv::Mat first = At(100), second = At(160);
  engine.JudgeImageChannel(first, first);
  engine.JudgeImageChannel(second, second);
  engine.CalacOverLapImageBright(first, second, bright);
  engine.CalacOverLapImageDefinition(first, second, definition);
  EXPECT_EQ(verdict.brightness, bright);
  EXPECT_EQ(verdict.definition, definition);
}

TEST_F(Verdict, OfTooSmallAndTooLargeAShift) {
  Feed(At(100));
  JQFrameVerdict verdict = Feed(At(112));
  EXPECT_EQ(verdict.cause, JQFrameCause::kShiftTooSmall);
  EXPECT_FLOAT_EQ(verdict.shiftShare, 0.05f);
  EXPECT_EQ(verdict.offset, cv::Point(12, 0));
  EXPECT_FALSE(stitcher.IsLastFrameAccepted());
  // Bounds that no run sets, so that frames with enough overlap to match are too far.
  inside::MinOverlap(stitcher) = 0.8f;
  verdict = Feed(At(160));
  EXPECT_EQ(verdict.cause, JQFrameCause::kShiftTooLarge);
  EXPECT_FLOAT_EQ(verdict.shiftShare, 0.25f);
}

TEST_F(Verdict, OfTooFewMatches) {
  Feed(At(20, 20));
  const JQFrameVerdict verdict = Feed(At(600, 280));
  EXPECT_EQ(verdict.cause, JQFrameCause::kTooFewMatches);
  EXPECT_TRUE(verdict.registered);
  EXPECT_LT(verdict.matchCount, 11);
  EXPECT_GT(verdict.pairCount, 0);
  EXPECT_GE(verdict.pairCount, verdict.matchCount);
}

TEST_F(Verdict, OfAFailedOverlapTest) {
  Feed(At(100));
  const JQFrameVerdict verdict = Feed(At(160) / 4);
  EXPECT_EQ(verdict.cause, JQFrameCause::kOverlapTestFailed);
  EXPECT_GE(verdict.brightness, 40.0f);
  EXPECT_TRUE(std::isnan(verdict.definition)) << "could not change the result any more";
  EXPECT_EQ(verdict.definitionLimit, 15.0f);
  EXPECT_TRUE(verdict.registered) << "frames are registered after the test in any case";
  EXPECT_EQ(verdict.offset, cv::Point(60, 0));
}

TEST_F(Verdict, TellsTheMotionTest) {
  Feed(QuietAt(100), 1);
  JQFrameVerdict verdict = Feed(QuietAt(160), 1);
  EXPECT_EQ(verdict.cause, JQFrameCause::kPlaced);
  JQStitchingAlgorithm engine;
  EXPECT_EQ(verdict.motion,
            static_cast<float>(engine.ImageMotionModel(QuietAt(100), QuietAt(160))));
  EXPECT_EQ(verdict.motionLimit, 5.0f);
  EXPECT_TRUE(std::isnan(verdict.brightness));
  EXPECT_TRUE(std::isnan(verdict.brightnessLimit));
  EXPECT_TRUE(std::isnan(verdict.definitionLimit));
  verdict = Feed(QuietAt(220) + cv::Scalar::all(30), 1);
  EXPECT_EQ(verdict.cause, JQFrameCause::kOverlapTestFailed);
  EXPECT_GE(verdict.motion, 5.0f);
}

// The record keeps what the frame before left: the verdict tells that it is not the
// frame's own.
TEST_F(Verdict, OfAFrameWithoutCorners) {
  Feed(At(100));
  Feed(At(112));
  const stitchflags before = stitcher.GetStitchFlags();
  ASSERT_GT(before.matchCount, 10);
  const JQFrameVerdict verdict = Feed(Flat(100));
  EXPECT_EQ(verdict.cause, JQFrameCause::kNoCornersInFrame);
  EXPECT_FALSE(verdict.registered);
  EXPECT_EQ(verdict.matchCount, 0);
  EXPECT_EQ(verdict.pairCount, 0);
  EXPECT_EQ(verdict.offset, cv::Point(0, 0));
  EXPECT_EQ(stitcher.GetStitchFlags().matchCount, before.matchCount);
}

TEST_F(Verdict, OfAReferenceWithoutCorners) {
  Feed(Flat(100));
  EXPECT_EQ(Feed(At(100)).cause, JQFrameCause::kNoCornersInReference);
}

// Level 2 goes through the resized pictures, level 3 through whole ones.
TEST_F(Verdict, AtOtherLevelsTheOffsetIsInTheWorkingScale) {
  for (const int level : {2, 3}) {
    SCOPED_TRACE(level);
    JQImageStitching other;
    const cv::Size size(240 * level, 200 * level);
    cv::Mat scene;
    cv::resize(m_scene, scene, cv::Size(), level, level, cv::INTER_LINEAR);
    for (const int x : {100, 200}) {
      HostRecord record(scenes::Cut(scene, cv::Point(x * level, 150 * level), size));
      other.Stitching(record.get(), 0, level, 8);
    }
    const JQFrameVerdict verdict = other.GetLastVerdict();
    EXPECT_EQ(verdict.cause, JQFrameCause::kPlaced);
    EXPECT_EQ(verdict.offset, cv::Point(100, 0));
    EXPECT_FLOAT_EQ(verdict.shiftShare, 100.0f / static_cast<float>(size.width));
  }
}

TEST_F(Verdict, OfACallThatRaised) {
  HostRecord bad(At(100));
  bad->pixels = nullptr;
  const auto failing = [&] { stitcher.Stitching(bad.get(), 0, 1, 8); };
  EXPECT_EQ(Ending(failing), Outcome::kImageLibraryError);
  EXPECT_EQ(stitcher.GetLastVerdict().cause, JQFrameCause::kCallFailed);
  for (const int x : {100, 160}) {
    Feed(At(x));
    EXPECT_TRUE(stitcher.IsLastFrameAccepted());
    EXPECT_EQ(Ending(failing), Outcome::kImageLibraryError);
    EXPECT_FALSE(stitcher.IsLastFrameAccepted());
    EXPECT_EQ(stitcher.GetLastVerdict().cause, JQFrameCause::kCallFailed);
    EXPECT_FALSE(stitcher.GetLastVerdict().registered);
    EXPECT_TRUE(std::isnan(stitcher.GetLastVerdict().brightness));
  }
}

TEST_F(Verdict, ANullImageLeavesIt) {
  Feed(At(100));
  Feed(At(160));
  stitcher.Stitching(nullptr, 0, 1, 8);
  EXPECT_EQ(stitcher.GetLastVerdict().cause, JQFrameCause::kPlaced);
}

TEST_F(Verdict, OfEveryFileOfABatchRun) {
  BatchFiles files;
  for (const cv::Mat& frame : {At(100), At(160), At(166), Flat(100), At(220)}) files.Add(frame);
  std::vector<JQFrameVerdict> verdicts;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus,
                   [&] { verdicts.push_back(stitcher.GetLastVerdict()); });
  BatchRun run(stitcher, files.paths());
  ASSERT_EQ(verdicts.size(), 5u);
  EXPECT_EQ(verdicts[0].cause, JQFrameCause::kFirstFrame);
  EXPECT_EQ(verdicts[1].cause, JQFrameCause::kPlaced);
  EXPECT_EQ(verdicts[1].offset, cv::Point(60, 0));
  EXPECT_EQ(verdicts[1].brightnessLimit, 128.0f);
  EXPECT_EQ(verdicts[2].cause, JQFrameCause::kShiftTooSmall);
  EXPECT_EQ(verdicts[2].offset, cv::Point(6, 0));
  EXPECT_EQ(verdicts[3].cause, JQFrameCause::kNoCornersInFrame);
  EXPECT_FALSE(verdicts[3].registered);
  EXPECT_EQ(verdicts[4].cause, JQFrameCause::kPlaced);
  EXPECT_EQ(verdicts[4].offset, cv::Point(60, 0));
}

// The files have the same size when they are checked; one is cut short afterwards.
TEST_F(Verdict, OfABatchFileWhoseReadingRaised) {
  BatchFiles files;
  for (const cv::Mat& frame : {At(100), At(160), At(220)}) files.Add(frame);
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus,
                   [&](const QString& text) {
                     if (text == "Image Stitching 2/3") QFile::remove(files.paths()[2]);
                   });
  EXPECT_EQ(Ending([&] { BatchRun(stitcher, files.paths()); }), Outcome::kImageLibraryError);
  EXPECT_EQ(stitcher.GetLastVerdict().cause, JQFrameCause::kCallFailed);
  EXPECT_FALSE(stitcher.IsLastFrameAccepted());
}

// Frames taken back one by one, held against deep copies of what a host saw before.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "batch_files.h"
#include "flat_run.h"
#include "seen_run.h"
#include "support/outcome.h"
#include "support/scenes.h"

namespace {

// A run of even frames in which every frame is placed where the test wants it.
class UndoRun {
 public:
  UndoRun(cv::Size frame, int level, int depth) : m_run(frame, level) {
    stitcher().SetUndoDepth(depth);
  }

  JQImageStitching& stitcher() { return m_run.stitcher; }

  /// What a host saw right before the call that placed the frame.
  SeenRun Place(cv::Point offset) {
    inside::Flags(stitcher()).offsetX = offset.x;
    inside::Flags(stitcher()).offsetY = offset.y;
    inside::Flags(stitcher()).matchCount = 11;
    const SeenRun before(stitcher());
    m_run.Show(++m_grey, 1, 1);
    EXPECT_TRUE(stitcher().IsLastFrameAccepted());
    return before;
  }
  void LeaveOut() { m_run.TakeTooDifferent(); }
  /// After a frame that was left out, another that differs from it: the motion test sees
  /// what it is used to again.
  void ComeBack() { m_run.Show(m_grey, 1, 1); }
  void Forget() { --m_grey; }

 private:
  FlatRun m_run;
  int m_grey = FlatRun::kFirstLevel;
};

// Direction, detection level, and whether the host holds the mosaic's header.
class UndoEveryWay : public ::testing::TestWithParam<std::tuple<int, int, bool>> {};

}  // namespace

// Seven steps: the mosaic starts, and grows more than once on every side in question.
TEST_P(UndoEveryWay, GoesBackThroughGrowthAndForwardAgain) {
  const auto [direction, level, held] = GetParam();
  const cv::Size working(60, 50);
  const cv::Point unit = scenes::Directions()[direction];
  UndoRun run(working * level, level, 10);
  // More than 10 % of the camera frame and less than the working frame.
  const cv::Point step(unit.x * 31, unit.y * 23);
  std::vector<SeenRun> before, after;
  std::vector<cv::Size> sizes;
  for (int k = 0; k < 7; ++k) {
    before.push_back(run.Place(step));
    after.emplace_back(run.stitcher());
    sizes.push_back(run.stitcher().GetMosaic().size());
  }
  ASSERT_NE(sizes.front(), sizes.back());

  for (int k = 6; k >= 0; --k) {
    SCOPED_TRACE("step " + std::to_string(k));
    EXPECT_EQ(run.stitcher().GetUndoCount(), k + 1);
    const cv::Mat mosaic = held ? run.stitcher().GetMosaic() : cv::Mat();
    ASSERT_TRUE(run.stitcher().UndoLastFrame());
    ExpectSameRun(run.stitcher(), before[k]);
    // A host that still looks at the larger mosaic sees it whole.
    if (held && mosaic.size() != run.stitcher().GetMosaic().size()) {
      EXPECT_TRUE(SameMatrix(mosaic, after[k].view.mosaic));
    }
    run.Forget();
  }
  EXPECT_TRUE(run.stitcher().GetMosaic().empty());
  const SeenRun start(run.stitcher());
  EXPECT_FALSE(run.stitcher().UndoLastFrame());
  ExpectSameRun(run.stitcher(), start);

  for (int k = 0; k < 7; ++k) {
    run.Place(step);
    ExpectSameRun(run.stitcher(), after[k]);
  }
}

INSTANTIATE_TEST_SUITE_P(Ways, UndoEveryWay,
                         ::testing::Combine(::testing::Range(0, 8), ::testing::Values(1, 2, 3),
                                            ::testing::Bool()));

TEST(Undo, KeepsNothingUnlessAsked) {
  UndoRun run(cv::Size(60, 50), 1, 0);
  run.Place(cv::Point(20, 0));
  const SeenRun before(run.stitcher());
  EXPECT_EQ(run.stitcher().GetUndoCount(), 0);
  EXPECT_FALSE(run.stitcher().UndoLastFrame());
  ExpectSameRun(run.stitcher(), before);
  // Depth counts from the next frame on.
  run.stitcher().SetUndoDepth(1);
  EXPECT_FALSE(run.stitcher().UndoLastFrame());
  run.Place(cv::Point(-20, 0));
  EXPECT_TRUE(run.stitcher().UndoLastFrame());
  EXPECT_FALSE(run.stitcher().UndoLastFrame());
}

TEST(Undo, ASmallerDepthDropsTheOldest) {
  UndoRun run(cv::Size(60, 50), 1, 3);
  std::vector<SeenRun> before;
  for (const int x : {20, 21, 22, 23}) before.push_back(run.Place(cv::Point(x, 0)));
  EXPECT_EQ(run.stitcher().GetUndoCount(), 3);
  run.stitcher().SetUndoDepth(2);
  EXPECT_EQ(run.stitcher().GetUndoCount(), 2);
  run.stitcher().SetUndoDepth(9);
  EXPECT_EQ(run.stitcher().GetUndoCount(), 2);
  for (const int k : {3, 2}) {
    EXPECT_TRUE(run.stitcher().UndoLastFrame());
    ExpectSameRun(run.stitcher(), before[k]);
  }
  EXPECT_FALSE(run.stitcher().UndoLastFrame());
  run.Place(cv::Point(23, 0));
  run.stitcher().SetUndoDepth(-3);
  EXPECT_EQ(run.stitcher().GetUndoCount(), 0);
}

TEST(Undo, ForgetsWhatWasLeftOutAndWhatFailed) {
  UndoRun run(cv::Size(60, 50), 1, 2);
  run.Place(cv::Point(20, 0));
  run.LeaveOut();
  run.ComeBack();
  const SeenRun before = run.Place(cv::Point(0, 20));
  run.LeaveOut();
  EXPECT_EQ(run.stitcher().GetLastVerdict().cause, JQFrameCause::kNoCornersInFrame);
  HostRecord bad(cv::Mat(50, 60, CV_8UC3, cv::Scalar::all(9)));
  bad->width = 0;
  EXPECT_EQ(Ending([&] { run.stitcher().Stitching(bad.get(), 1, 1, 8); }),
            Outcome::kImageLibraryError);
  EXPECT_EQ(run.stitcher().GetLastVerdict().cause, JQFrameCause::kCallFailed);
  EXPECT_EQ(run.stitcher().GetUndoCount(), 2);
  EXPECT_TRUE(run.stitcher().UndoLastFrame());
  ExpectSameRun(run.stitcher(), before);
}

// A host may paint into the mosaic, through the record.
TEST(Undo, GivesBackWhatTheFrameCoveredAndLeavesTheRest) {
  UndoRun run(cv::Size(60, 50), 1, 1);
  run.Place(cv::Point(0, 0) + cv::Point(20, 0));
  cv::Mat mosaic = run.stitcher().GetMosaic();
  const cv::Point corner = run.stitcher().GetCurrentPosition();
  mosaic.at<cv::Vec3b>(corner + cv::Point(5, 5)) = cv::Vec3b(1, 2, 3);
  const SeenRun before = run.Place(cv::Point(-8, 0));
  mosaic = run.stitcher().GetMosaic();
  mosaic.at<cv::Vec3b>(corner + cv::Point(6, 6)) = cv::Vec3b(4, 5, 6);   // inside the frame
  mosaic.at<cv::Vec3b>(corner + cv::Point(58, 6)) = cv::Vec3b(7, 8, 9);  // beside it
  EXPECT_TRUE(run.stitcher().UndoLastFrame());
  cv::Mat expected = before.view.mosaic.clone();
  expected.at<cv::Vec3b>(corner + cv::Point(58, 6)) = cv::Vec3b(7, 8, 9);
  EXPECT_TRUE(SameMatrix(run.stitcher().GetMosaic(), expected));
}

// The current picture and the reference are one at level 1; recolouring the one still
// recolours the other after the step back.
TEST(Undo, CurrentPictureAndReferenceStayOne) {
  UndoRun run(cv::Size(60, 50), 1, 1);
  run.Place(cv::Point(20, 0));
  ASSERT_EQ(inside::CurFrame(run.stitcher()).data, inside::RefFrame(run.stitcher()).data);
  run.Place(cv::Point(20, 0));
  EXPECT_TRUE(run.stitcher().UndoLastFrame());
  EXPECT_EQ(inside::CurFrame(run.stitcher()).data, inside::RefFrame(run.stitcher()).data);
}

TEST(Undo, IsNotForBatchRuns) {
  RandomSource random(31);
  const cv::Mat scene = scenes::Dense(random, 300, 500);
  BatchFiles files;
  for (int k = 0; k < 3; ++k)
    files.Add(scenes::Cut(scene, cv::Point(20 + 60 * k, 20), cv::Size(240, 200)));
  UndoRun run(cv::Size(60, 50), 1, 4);
  run.Place(cv::Point(20, 0));
  JQImageStitching& stitcher = run.stitcher();
  std::vector<int> counts;
  QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus,
                   [&] { counts.push_back(stitcher.GetUndoCount()); });
  const BatchRun batch(stitcher, files.paths());
  EXPECT_EQ(stitcher.GetFrameCount(), 3);
  EXPECT_EQ(counts, std::vector<int>(3, 0));
  EXPECT_EQ(stitcher.GetUndoCount(), 0);
  EXPECT_FALSE(stitcher.UndoLastFrame());
}

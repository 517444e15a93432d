// A run rebuilt from its journal is the run that was recorded, and goes on like it.
#include <gtest/gtest.h>

#include <cmath>

#include "host/input_error.h"
#include "host/journal/recorded_run.h"
#include "host/journal/recorded_scene.h"

namespace jqhost_test {
namespace {

using jqhost::FrameResult;
using jqhost::PushSession;

bool Equal(const cv::Mat& a, const cv::Mat& b) {
  return a.size() == b.size() && a.type() == b.type() &&
         (a.empty() || cv::norm(a, b, cv::NORM_INF) == 0);
}

// All that a host can see of a run.
struct Seen {
  explicit Seen(const PushSession& session, JQImageStitching& stitcher)
      : mosaic(stitcher.GetMosaic().clone()),
        bounds(stitcher.GetPlacedBounds()),
        boxMin(stitcher.GetContentMin()),
        boxMax(stitcher.GetContentMax()),
        position(stitcher.GetCurrentPosition()),
        offset(stitcher.GetOffsetPosition()),
        origin(session.Judge().Origin()),
        count(stitcher.GetFrameCount()),
        verdict(stitcher.GetLastVerdict()) {}

  cv::Mat mosaic;
  cv::Rect bounds;
  cv::Point boxMin, boxMax, position, offset, origin;
  int count;
  JQFrameVerdict verdict;
};

bool SameNumber(float a, float b) {
  return a == b || (std::isnan(a) && std::isnan(b));
}

void ExpectSame(const Seen& a, const Seen& b) {
  EXPECT_TRUE(Equal(a.mosaic, b.mosaic));
  EXPECT_EQ(a.bounds, b.bounds);
  EXPECT_EQ(a.boxMin, b.boxMin);
  EXPECT_EQ(a.boxMax, b.boxMax);
  EXPECT_EQ(a.position, b.position);
  EXPECT_EQ(a.offset, b.offset);
  EXPECT_EQ(a.origin, b.origin);
  EXPECT_EQ(a.count, b.count);
  EXPECT_EQ(a.verdict.cause, b.verdict.cause);
  EXPECT_EQ(a.verdict.matchCount, b.verdict.matchCount);
  EXPECT_EQ(a.verdict.pairCount, b.verdict.pairCount);
  EXPECT_EQ(a.verdict.offset, b.verdict.offset);
  EXPECT_TRUE(SameNumber(a.verdict.shiftShare, b.verdict.shiftShare));
  EXPECT_TRUE(SameNumber(a.verdict.brightness, b.verdict.brightness));
  EXPECT_TRUE(SameNumber(a.verdict.definition, b.verdict.definition));
  EXPECT_TRUE(SameNumber(a.verdict.motion, b.verdict.motion));
}

void ExpectSame(const FrameResult& a, const FrameResult& b) {
  EXPECT_EQ(a.name, b.name);
  EXPECT_EQ(a.number, b.number);
  EXPECT_EQ(a.cause, b.cause);
  EXPECT_EQ(a.position, b.position);
  EXPECT_EQ(a.measured.offset, b.measured.offset);
  EXPECT_EQ(a.measured.matchCount, b.measured.matchCount);
  EXPECT_EQ(a.shiftShare, b.shiftShare);
  EXPECT_EQ(a.seconds, b.seconds);
  ASSERT_EQ(a.doubt.has_value(), b.doubt.has_value());
  if (!a.doubt) return;
  EXPECT_EQ(a.doubt->confidence, b.doubt->confidence);
  EXPECT_EQ(a.doubt->doubtful, b.doubt->doubtful);
  EXPECT_EQ(a.doubt->reason, b.doubt->reason);
  EXPECT_EQ(a.doubt->rivalShift, b.doubt->rivalShift);
  EXPECT_EQ(a.doubt->period, b.doubt->period);
}

struct Placed {
  std::size_t frame;  // index into the scene's frames
  Seen seen;          // right after it
  FrameResult result;
};

// Every cut of a recorded run: rebuilt, and then given the frames that came after. False
// for a scene of which too few frames are placed to tell anything.
bool TryEveryCut(const RecordedScene& scene) {
  const jqstitch_test::TemporaryFolder place;
  const std::string folder = place / "journal";
  std::vector<Placed> placed;
  std::vector<FrameResult> results;
  PushSession session(scene.Settings());
  {
    const auto journal = scene.NewJournal(folder);
    session.Record(*journal, [] { return jqhost::SampleSummary(); });
    for (std::size_t i = 0; i < scene.Frames().size(); ++i) {
      results.push_back(session.Take(scene.Frames()[i]));
      if (results.back().Placed()) {
        placed.push_back({i, Seen(session, session.Stitcher()), results.back()});
      }
    }
  }
  const Seen end(session, session.Stitcher());
  if (placed.size() < 5) return false;

  for (std::size_t k = 0; k < placed.size(); ++k) {
    SCOPED_TRACE("cut after recorded frame " + std::to_string(k + 1));
    jqhost::RecordedPart part;
    part.until = static_cast<int>(k) + 1;
    jqhost::RecordedRun recorded(folder, part);
    EXPECT_TRUE(recorded.Torn().empty());
    PushSession again(scene.Settings());
    const auto rebuilt = recorded.Rebuild(again, false, jqhost::StopToken(), [](int) {});
    EXPECT_TRUE(rebuilt && rebuilt->size() == k + 1);
    if (testing::Test::HasFailure()) return true;
    for (std::size_t i = 0; i <= k; ++i) ExpectSame((*rebuilt)[i], placed[i].result);
    ExpectSame(Seen(again, again.Stitcher()), placed[k].seen);
    for (std::size_t i = placed[k].frame + 1; i < scene.Frames().size(); ++i) {
      FrameResult result = again.Take(scene.Frames()[i]);
      result.seconds = results[i].seconds;
      ExpectSame(result, results[i]);
    }
    ExpectSame(Seen(again, again.Stitcher()), end);
    if (testing::Test::HasFailure()) return true;
  }
  return true;
}

TEST(JournalReplay, EveryCutIsTheRunAsItWasThereAndGoesOnLikeIt) {
  const std::uint64_t seed = TestSeed();
  for (const int mode : {0, 1}) {
    for (const int level : {1, 2, 3}) {
      SCOPED_TRACE("mode " + std::to_string(mode) + ", level " + std::to_string(level) +
                   ", JQ_TEST_SEED=" + std::to_string(seed));
      constexpr std::uint64_t kScenes = 20;
      jqhost::StitchSettings settings;
      settings.overlapMode = mode;
      settings.detectLevel = level;
      std::uint64_t scene = 0;
      while (!TryEveryCut(RecordedScene(settings, seed + scene, level == 1 ? 14 : 10))) {
        ASSERT_LT(++scene, kScenes) << "the scenes are to make frames that are placed";
      }
      if (HasFailure()) return;
    }
  }
}

}  // namespace
}  // namespace jqhost_test

// Whole live runs through real image records: the library beside its plain twin,
// compared after every call.

#include <gtest/gtest.h>

#include <cstdio>
#include <tuple>

#include "stage.h"
#include "support/cpu_levels.h"
#include "support/host_record.h"
#include "support/outcome.h"
#include "twin_compare.h"

namespace {

// Overlap mode and detection level.
class LiveRuns : public ::testing::TestWithParam<std::tuple<int, int>> {
 protected:
  int mode() const { return std::get<0>(GetParam()); }
  int level() const { return std::get<1>(GetParam()); }

  void Run(RandomSource& random);

  int m_frames = 0;
  int m_placed = 0;
};

struct Pair {
  JQImageStitching library;
  reference::Stitcher twin;

  // Both get a record with the same bytes. `call` is given a stitcher and a record
  // and returns the record that it got back.
  template <class Call>
  void Both(RandomSource& random, const cv::Mat& frame, Call call) {
    const int padding = random.OneIn(2) ? random.Int(1, 9) : 0;
    const auto pattern = static_cast<unsigned char>(random.Int(0, 255));
    HostRecord forLibrary(frame, padding, pattern);
    HostRecord forTwin(frame, padding, pattern);
    const _tagJQIMG before = *forLibrary.get();
    _tagJQIMG* gotLibrary = nullptr;
    _tagJQIMG* gotTwin = nullptr;
    const Outcome ofLibrary = Ending([&] { gotLibrary = call(library, forLibrary.get()); });
    const Outcome ofTwin = Ending([&] { gotTwin = call(twin, forTwin.get()); });
    EXPECT_EQ(ofLibrary, ofTwin);
    // Null, the stitcher's own or the host's.
    EXPECT_EQ(gotLibrary == nullptr, gotTwin == nullptr);
    EXPECT_EQ(gotLibrary == forLibrary.get(), gotTwin == forTwin.get());
    if (gotLibrary != nullptr && gotLibrary != forLibrary.get()) {
      EXPECT_EQ(gotLibrary, inside::OutImage(library));
      if (gotTwin != nullptr) {
        const unsigned char* wanted = gotTwin->pixels;
        EXPECT_EQ(gotLibrary->pixels == library.GetMosaic().data, wanted == twin.m_mosaic.data);
      }
    }
    EXPECT_EQ(std::memcmp(&before, forLibrary.get(), sizeof before), 0) << "the host's record";
    EXPECT_EQ(forLibrary.buffer(), forTwin.buffer()) << "the host's pixels";
    ExpectSame(ViewOf(library), ViewOf(twin));
  }
};

void LiveRuns::Run(RandomSource& random) {
  const std::vector<std::string> levels = CpuLevels();
  const ScopedCpuLevel cpu(levels[random.Int(0, static_cast<int>(levels.size()) - 1)]);
  const int overlapMode = mode() == 0 ? 0 : random.OneIn(2) ? 1 : -3;
  const int budget = random.Int(4, 16);
  const int detectLevel = level();
  Stage stage(random, mode(), detectLevel);
  Pair pair;
  for (int k = 0; k < 12 && !::testing::Test::HasFailure(); ++k) {
    SCOPED_TRACE("frame " + std::to_string(k));
    cv::Mat frame = k == 0 ? stage.First() : stage.Next();
    // Above level 1 a smaller frame fits too, and shrinks the reference for one call.
    if (k > 0 && detectLevel > 1 && random.OneIn(6)) {
      frame = frame(cv::Rect{0, 0, frame.cols - random.Int(0, 9), frame.rows - random.Int(1, 9)});
    }
    // Later frames may carry any three ints.
    const int noise = k == 0 ? 0 : random.Int(-2, 2);
    pair.Both(random, AsDelivered(random, frame), [&](auto& stitcher, _tagJQIMG* img) {
      return stitcher.Stitching(img, overlapMode + noise, detectLevel + noise, budget + noise);
    });
    if (k > 0) {
      ++m_frames;
      m_placed += pair.library.IsLastFrameAccepted();
      stage.Placed(pair.library.IsLastFrameAccepted());
    }
    // A host that shows the trimmed picture while the run goes on. The motion test then
    // compares with that picture, which must not be smaller than a frame.
    const cv::Size box = pair.library.GetCurSize();
    const bool large =
        box.width >= frame.cols / detectLevel && box.height >= frame.rows / detectLevel;
    if (random.OneIn(6) && (mode() == 0 || large)) {
      pair.Both(random, frame,
                [](auto& stitcher, _tagJQIMG* img) { return stitcher.CutEdge(img); });
    }
    if (random.OneIn(6)) {
      pair.Both(random, frame,
                [](auto& stitcher, _tagJQIMG* img) { return stitcher.GetImageStitching(img); });
    }
  }
  pair.Both(random, stage.First(),
            [](auto& stitcher, _tagJQIMG* img) { return stitcher.CutEdge(img); });
  EXPECT_EQ(pair.library.ChangeStitchingBackground(300, 20, 10),
            pair.twin.ChangeStitchingBackground(300, 20, 10));
  pair.Both(random, stage.First(),
            [](auto& stitcher, _tagJQIMG* img) { return stitcher.GetImageStitching(img); });
}

}  // namespace

TEST_P(LiveRuns, AreThoseOfTheTwin) {
  const std::uint64_t first = TestSeed();
  const int rounds = TestRounds(4);
  std::printf("first seed %llu, %d rounds\n", static_cast<unsigned long long>(first), rounds);
  for (int k = 0; k < rounds && !HasFailure(); ++k) {
    const std::uint64_t seed = first + static_cast<std::uint64_t>(k);
    SCOPED_TRACE("repeat with JQ_TEST_SEED=" + std::to_string(seed) + " JQ_TEST_ROUNDS=1");
    RandomSource random(seed);
    Run(random);
  }
  std::printf("%d of %d frames placed\n", m_placed, m_frames);
  // Otherwise nothing was tested but refusals.
  if (rounds >= 4) {
    EXPECT_GE(m_placed * 4, m_frames);
  }
}

INSTANTIATE_TEST_SUITE_P(ModeAndLevel, LiveRuns,
                         ::testing::Combine(::testing::Values(0, 1), ::testing::Values(1, 2, 3)),
                         [](const auto& row) {
                           return (std::get<0>(row.param) == 0 ? std::string("Overlap")
                                                               : std::string("Motion")) +
                                  "Level" + std::to_string(std::get<1>(row.param));
                         });

TEST(LiveRunThreads, ResultsDoNotDependOnTheImageLibrarysThreads) {
  const std::uint64_t seed = TestSeed();
  std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
  SCOPED_TRACE("repeat with JQ_TEST_SEED=" + std::to_string(seed));
  const int usual = cv::getNumThreads();
  constexpr int kRuns = 5;
  for (const int level : {1, 2}) {
    int placed = 0;
    for (int run = 0; run < kRuns; ++run) {
      std::vector<cv::Mat> frames;
      {
        RandomSource random(seed + static_cast<std::uint64_t>(run));
        Stage stage(random, 0, level);
        frames.push_back(stage.First());
        for (int k = 0; k < 8; ++k) {
          frames.push_back(stage.Next());
          stage.Placed(true);
        }
      }
      JQImageStitching one;
      JQImageStitching two;
      for (const cv::Mat& frame : frames) {
        HostRecord record(frame);
        cv::setNumThreads(1);
        const Outcome outcome = Ending([&] { one.Stitching(record.get(), 0, level, 8); });
        cv::setNumThreads(2);
        EXPECT_EQ(Ending([&] { two.Stitching(record.get(), 0, level, 8); }), outcome);
        ExpectSame(ViewOf(two), ViewOf(one));
      }
      placed += one.GetFrameCount() - 1;
    }
    EXPECT_GT(placed, 0) << "nothing but refusals at level " << level;
  }
  cv::setNumThreads(usual);
}

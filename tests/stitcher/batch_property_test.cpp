// Whole batch runs through real files and the slot, twice on one stitcher: the
// library beside its plain twin, compared at every progress signal and at the end.

#include <gtest/gtest.h>

#include <cstdio>

#include "batch_files.h"
#include "stage.h"
#include "support/cpu_levels.h"
#include "support/outcome.h"
#include "twin_compare.h"

namespace {

BatchFiles& Shoot(RandomSource& random, BatchFiles& files) {
  static const char* const kFormats[] = {"png", "bmp", "tiff"};
  Stage stage(random, 0, 1);
  const int count = random.OneIn(8) ? 1 : random.Int(2, 9);
  for (int k = 0; k < count; ++k) {
    cv::Mat frame = k == 0 ? stage.First() : stage.Next();
    if (random.OneIn(20)) cv::cvtColor(frame, frame, cv::COLOR_BGR2GRAY);
    files.Add(frame, kFormats[random.Int(0, 2)]);
    // The run itself starts the next step from the last placed frame, which is the
    // one before in most cases.
    stage.Placed(true);
  }
  return files;
}

class BatchRuns {
 public:
  void Run(RandomSource& random) {
    const std::vector<std::string> levels = CpuLevels();
    const ScopedCpuLevel cpu(levels[random.Int(0, static_cast<int>(levels.size()) - 1)]);
    std::vector<StitcherView> seen;
    std::vector<StitcherView> wanted;
    JQImageStitching library;
    reference::Stitcher twin;
    QObject::connect(&library, &JQImageStitching::sglMultiImageProcessStatus, [&] {
      seen.push_back(ViewOf(library));
      seen.back().Clone();
    });
    twin.m_onStatus = [&] {
      wanted.push_back(ViewOf(twin));
      wanted.back().Clone();
    };
    for (int run = 0; run < 2; ++run) {
      SCOPED_TRACE("run " + std::to_string(run));
      BatchFiles files;
      Shoot(random, files);
      seen.clear();
      wanted.clear();
      twin.m_statusTexts.clear();
      twin.m_finishedNull.clear();
      twin.m_fileList = files.localPaths();

      std::vector<std::string> texts;
      std::vector<cv::Mat*> finished;
      QObject context;
      QObject::connect(&library, &JQImageStitching::sglMultiImageProcessStatus, &context,
                       [&](const QString& text) { texts.push_back(text.toStdString()); });
      QObject::connect(&library, &JQImageStitching::sglMultiImageProcessFinished, &context,
                       [&](void* dst) { finished.push_back(static_cast<cv::Mat*>(dst)); });
      library.m_fileList = files.paths();
      const Outcome ofLibrary = Ending(
          [&] { QMetaObject::invokeMethod(&library, "slotStartStitching", Qt::DirectConnection); });
      EXPECT_EQ(ofLibrary, Ending([&] { twin.slotStartStitching(); }));

      EXPECT_EQ(texts, twin.m_statusTexts);
      ASSERT_EQ(finished.size(), twin.m_finishedNull.size());
      if (!finished.empty()) {
        EXPECT_EQ(finished[0] == nullptr, twin.m_finishedNull[0]);
        if (finished[0] != nullptr) {
          EXPECT_EQ(finished[0], &inside::CurFrame(library));
        }
      }
      ASSERT_EQ(seen.size(), wanted.size());
      for (std::size_t k = 0; k < seen.size(); ++k) {
        SCOPED_TRACE("file " + std::to_string(k + 1));
        ExpectSame(seen[k], wanted[k]);
        if (k > 0) {
          ++files_;
          placed_ += seen[k].placed;
        }
      }
      ExpectSame(ViewOf(library), ViewOf(twin));
    }
  }

  int files_ = 0;
  int placed_ = 0;
};

}  // namespace

TEST(BatchRuns, AreThoseOfTheTwin) {
  const std::uint64_t first = TestSeed();
  const int rounds = TestRounds(8);
  std::printf("first seed %llu, %d rounds\n", static_cast<unsigned long long>(first), rounds);
  BatchRuns runs;
  for (int k = 0; k < rounds && !HasFailure(); ++k) {
    const std::uint64_t seed = first + static_cast<std::uint64_t>(k);
    SCOPED_TRACE("repeat with JQ_TEST_SEED=" + std::to_string(seed) + " JQ_TEST_ROUNDS=1");
    RandomSource random(seed);
    runs.Run(random);
  }
  std::printf("%d of %d files placed\n", runs.placed_, runs.files_);
  if (rounds >= 8) {
    EXPECT_GE(runs.placed_ * 4, runs.files_);
  }
}

// A batch run that is asked to stop.

#include <gtest/gtest.h>

#include <thread>

#include "batch_files.h"
#include "support/compare.h"
#include "support/host_record.h"
#include "support/scenes.h"
#include "support/stitcher_access.h"

namespace {

class Stop : public ::testing::Test {
 protected:
  Stop() {
    RandomSource random(3);
    const cv::Mat scene = scenes::Dense(random, 500, 900);
    for (const int x : {100, 160, 220, 280})
      files.Add(scenes::Cut(scene, cv::Point(x, 150), cv::Size(240, 200)));
  }
  /// Asks after this file of the next run.
  void AskAfter(const QString& text, bool fromAnotherThread = false) {
    QObject::connect(&stitcher, &JQImageStitching::sglMultiImageProcessStatus, &m_context,
                     [=](const QString& now) {
                       if (now != text) return;
                       if (fromAnotherThread)
                         std::thread([this] { stitcher.RequestStop(); }).join();
                       else
                         stitcher.RequestStop();
                     });
  }
  JQImageStitching stitcher;
  BatchFiles files;

 private:
  QObject m_context;
};

using Texts = std::vector<std::string>;

}  // namespace

TEST_F(Stop, EndsTheRunAfterTheFileInHandWithWhatIsStitched) {
  for (const bool fromAnotherThread : {false, true}) {
    AskAfter("Image Stitching 2/4", fromAnotherThread);
    const BatchRun run(stitcher, files.paths());
    EXPECT_EQ(run.texts(), (Texts{"Image Stitching 1/4", "Image Stitching 2/4"}));
    ASSERT_EQ(run.finished().size(), 1u);
    ASSERT_NE(run.finished()[0], nullptr);

    JQImageStitching two;
    const BatchRun whole(two, files.paths().mid(0, 2));
    EXPECT_EQ(two.GetFrameCount(), 2);
    EXPECT_TRUE(SameMatrix(*run.finished()[0], *whole.finished()[0]));
  }
}

TEST_F(Stop, IsForgottenByTheNextRun) {
  stitcher.RequestStop();
  const BatchRun run(stitcher, files.paths());
  EXPECT_EQ(run.texts().size(), 4u);
  EXPECT_EQ(stitcher.GetFrameCount(), 4);
}

// Not the mosaic of the run before.
TEST_F(Stop, AfterTheFirstFileHandsOverAnEmptyPicture) {
  BatchRun(stitcher, files.paths());
  AskAfter("Image Stitching 1/4");
  const BatchRun run(stitcher, files.paths());
  EXPECT_EQ(run.texts(), Texts{"Image Stitching 1/4"});
  ASSERT_EQ(run.finished().size(), 1u);
  ASSERT_NE(run.finished()[0], nullptr);
  EXPECT_TRUE(run.finished()[0]->empty());
  EXPECT_EQ(stitcher.GetLastVerdict().cause, JQFrameCause::kFirstFrame);
}

TEST_F(Stop, AfterTheLastFileChangesNothing) {
  AskAfter("Image Stitching 4/4");
  const BatchRun run(stitcher, files.paths());
  EXPECT_EQ(run.texts().size(), 4u);
  EXPECT_EQ(stitcher.GetFrameCount(), 4);
  EXPECT_EQ(run.finished()[0]->size(), stitcher.GetCurSize());
}

TEST_F(Stop, DoesNotTouchALiveRun) {
  stitcher.RequestStop();
  for (const QString& path : files.paths()) {
    HostRecord record(cv::imread(path.toStdString()));
    EXPECT_NE(stitcher.Stitching(record.get(), 0, 1, 8), nullptr);
  }
  EXPECT_EQ(stitcher.GetFrameCount(), 4);
}

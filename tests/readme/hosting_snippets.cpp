// The code of docs/hosting.md, so that it is compiled and run, and what it promises.
#include <gtest/gtest.h>

#include <QFile>
#include <opencv2/imgcodecs.hpp>

#include "jqimagestitching.h"
#include "jqstitch/run_program.h"
#include "support/host_record.h"
#include "support/outcome.h"

namespace {

using jqstitch_test::RunProgram;
using jqstitch_test::TemporaryFolder;

class HostingPage : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto pass = RunProgram({"simulate", "-o", folder / "pass", "--size", "640x480", "--path",
                                  "row", "--count", "3", "--step", "25", "-q"});
    ASSERT_EQ(pass.exitCode, 0) << pass.err;
    for (const char* name : {"1", "2", "3"}) {
      files << QString::fromStdString(folder / "pass/frame_000" + name + ".png");
    }
  }
  cv::Mat Frame(int i) const { return cv::imread(files[i].toStdString()); }

  const TemporaryFolder folder;
  QList<QString> files;
};

// A stitcher and the finished signals that it has sent.
struct BatchHost {
  BatchHost() {
    QObject::connect(
        &stitcher, &JQImageStitching::sglMultiImageProcessFinished, &stitcher,
        [this](void* mosaic) {
          ++finished;
          picture = mosaic == nullptr ? cv::Mat() : static_cast<cv::Mat*>(mosaic)->clone();
          refused = mosaic == nullptr;
        },
        Qt::DirectConnection);
  }
  void Run(const QList<QString>& list) {
    stitcher.m_fileList = list;
    QMetaObject::invokeMethod(&stitcher, "slotStartStitching", Qt::DirectConnection);
  }

  JQImageStitching stitcher;
  int finished = 0;
  bool refused = false;
  cv::Mat picture;
};

TEST_F(HostingPage, ABatchRunTellsWhatBecameOfEachFileAndCanBeTrimmedExactly) {
  JQImageStitching stitcher;
  int placedFiles = 0;
  cv::Size finished;
  const auto show = [&](const QString&, bool placed) { placedFiles += placed ? 1 : 0; };
  const auto done = [&](const cv::Mat* mosaic) { finished = mosaic->size(); };

  stitcher.m_fileList = files;  // QStrings, in stitching order, all of one size
  QObject::connect(
      &stitcher, &JQImageStitching::sglMultiImageProcessStatus, &stitcher,
      [&](const QString& text) { show(text, stitcher.IsLastFrameAccepted()); },
      Qt::DirectConnection);
  QObject::connect(
      &stitcher, &JQImageStitching::sglMultiImageProcessFinished, &stitcher,
      [&](void* mosaic) { done(static_cast<cv::Mat*>(mosaic)); }, Qt::DirectConnection);
  QMetaObject::invokeMethod(&stitcher, "slotStartStitching", Qt::DirectConnection);

  EXPECT_EQ(placedFiles, 3);
  // Two steps of 160 pixels, each measured to within 4.
  EXPECT_NEAR(finished.width, 640 + 2 * 160, 8);

  cv::Mat picture = stitcher.GetMosaic()(stitcher.GetPlacedBounds()).clone();

  EXPECT_NEAR(picture.cols, 640 + 2 * 160, 8);
  EXPECT_NEAR(picture.rows, 480, 8);
}

TEST_F(HostingPage, AListOfOneFileHandsOverTheMosaicOfTheRunBefore) {
  BatchHost host;
  host.Run({files[0]});
  EXPECT_EQ(host.finished, 1);
  EXPECT_FALSE(host.refused);
  EXPECT_TRUE(host.picture.empty());
  host.Run(files);
  const cv::Mat before = host.picture;
  ASSERT_FALSE(before.empty());
  host.Run({files[2]});
  EXPECT_EQ(host.finished, 3);
  ASSERT_EQ(host.picture.size(), before.size());
  EXPECT_EQ(cv::norm(host.picture, before, cv::NORM_INF), 0);
}

TEST_F(HostingPage, ARefusedRunFinishesWithNullAndChangesNothing) {
  BatchHost host;
  host.Run(files);
  const cv::Mat before = host.stitcher.GetMosaic().clone();
  const QString missing = QString::fromStdString(folder / "missing.png");
  host.Run({files[0], missing});
  EXPECT_EQ(host.finished, 2);
  EXPECT_TRUE(host.refused);
  EXPECT_EQ(cv::norm(host.stitcher.GetMosaic(), before, cv::NORM_INF), 0);
  EXPECT_EQ(host.stitcher.GetFrameCount(), 3);
}

TEST_F(HostingPage, AFileThatVanishesDuringTheRunEndsItByAnException) {
  BatchHost host;
  QObject::connect(
      &host.stitcher, &JQImageStitching::sglMultiImageProcessStatus, &host.stitcher,
      [&](const QString&) { QFile::remove(files[2]); }, Qt::DirectConnection);
  EXPECT_EQ(Ending([&] { host.Run(files); }), Outcome::kImageLibraryError);
  EXPECT_EQ(host.finished, 0);
  EXPECT_EQ(host.stitcher.GetLastVerdict().cause, JQFrameCause::kCallFailed);
  EXPECT_FALSE(host.stitcher.IsLastFrameAccepted());
  EXPECT_NEAR(host.stitcher.GetPlacedBounds().width, 640 + 160, 4);
}

TEST_F(HostingPage, AStoppedRunFinishesWithWhatHasBeenStitched) {
  BatchHost host;
  int told = 0;
  QObject::connect(
      &host.stitcher, &JQImageStitching::sglMultiImageProcessStatus, &host.stitcher,
      [&](const QString&) {
        if (++told == 2) host.stitcher.RequestStop();
      },
      Qt::DirectConnection);
  host.Run(files);
  EXPECT_EQ(told, 2);
  EXPECT_EQ(host.finished, 1);
  EXPECT_NEAR(host.picture.cols, 640 + 160, 4);
}

// At level 2 the second frame sets the mosaic's size even where it is left out.
TEST_F(HostingPage, ASmallSecondFrameAtLevel2LetsEveryLaterCallRaise) {
  JQImageStitching stitcher;
  HostRecord first(Frame(0)), small(cv::Mat(200, 200, CV_8UC3, cv::Scalar::all(90)));
  stitcher.Stitching(first.get(), 0, 2, 8);
  stitcher.Stitching(small.get(), 0, 2, 8);
  EXPECT_FALSE(stitcher.IsLastFrameAccepted());
  EXPECT_EQ(stitcher.GetMosaic().size(), cv::Size(200, 200));
  for (int i = 0; i < 3; ++i) {
    HostRecord next(Frame(i));
    EXPECT_EQ(Ending([&] { stitcher.Stitching(next.get(), 0, 2, 8); }),
              Outcome::kImageLibraryError);
    EXPECT_FALSE(stitcher.IsLastFrameAccepted());
  }
  EXPECT_EQ(stitcher.GetMosaic().size(), cv::Size(200, 200));
}

// The frame after trimming is compared with the squeezed picture, the one after that
// with its predecessor again; nothing raises.
TEST_F(HostingPage, TrimmingInMidRunAtLevel2CostsTheMotionTestOneFrame) {
  JQImageStitching stitcher;
  const auto take = [&](int i) {
    HostRecord record(Frame(i));
    stitcher.Stitching(record.get(), 1, 2, 8);
    return stitcher.GetLastVerdict();
  };
  stitcher.Stitching(HostRecord(Frame(0)).get(), 1, 2, 8);
  EXPECT_EQ(take(0).motion, 0);
  ASSERT_TRUE(stitcher.CutEdge());
  take(1);
  EXPECT_EQ(take(1).motion, 0);
}

}  // namespace

// The code of docs/hosting.md, so that it is compiled and run.
#include <gtest/gtest.h>

#include <opencv2/imgcodecs.hpp>

#include "jqimagestitching.h"
#include "jqstitch/run_program.h"

namespace {

using jqstitch_test::Outcome;
using jqstitch_test::RunProgram;
using jqstitch_test::TemporaryFolder;

TEST(Hosting, ABatchRunTellsWhatBecameOfEachFileAndCanBeTrimmedExactly) {
  const TemporaryFolder folder;
  const Outcome pass = RunProgram({"simulate", "-o", folder / "pass", "--size", "640x480", "--path",
                                   "row", "--count", "3", "--step", "25", "-q"});
  ASSERT_EQ(pass.exitCode, 0) << pass.err;
  QList<QString> files;
  for (const char* name : {"1", "2", "3"}) {
    files << QString::fromStdString(folder / "pass/frame_000" + name + ".png");
  }

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

}  // namespace

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <opencv2/imgcodecs.hpp>

#include "flat_run.h"
#include "support/compare.h"
#include "support/outcome.h"

namespace {

HostRecord& AnyRecord() {
  static HostRecord record(cv::Mat(6, 5, CV_8UC3, cv::Scalar::all(1)), 0, 0x33);
  return record;
}

}  // namespace

TEST(Trimming, BeforeAnyFrame) {
  JQImageStitching stitcher;
  _tagJQIMG* img = AnyRecord().get();
  const _tagJQIMG before = *img;
  EXPECT_FALSE(stitcher.CutEdge());
  EXPECT_EQ(stitcher.CutEdge(img), img);
  EXPECT_EQ(std::memcmp(img, &before, sizeof before), 0);
  EXPECT_EQ(stitcher.GetImageStitching(img), nullptr);
  QTemporaryDir folder;
  const QString path = folder.filePath("none.png");
  EXPECT_FALSE(stitcher.SaveImageStitching(path));
  EXPECT_FALSE(QFile::exists(path));
}

TEST(Trimming, AfterTheFirstFrameOnly) {
  FlatRun run(cv::Size(100, 50));
  _tagJQIMG* img = AnyRecord().get();
  EXPECT_FALSE(run.stitcher.CutEdge());
  EXPECT_EQ(run.stitcher.CutEdge(img), img);
  const _tagJQIMG* shown = run.stitcher.GetImageStitching(img);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown, inside::OutImage(run.stitcher));
  EXPECT_EQ(shown->width, 100);
  EXPECT_EQ(shown->height, 50);
  EXPECT_EQ(shown->pixels, inside::CurFrame(run.stitcher).data);
  EXPECT_EQ(shown->reserved4[100], img->reserved4[100]);
}

TEST(Trimming, WithoutARecordOfTheHostsItTrimsAndGivesNull) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  EXPECT_EQ(run.stitcher.GetImageStitching(nullptr), nullptr);
  EXPECT_EQ(run.stitcher.CutEdge(nullptr), nullptr);
  EXPECT_EQ(inside::CurFrame(run.stitcher).size(), cv::Size(130, 50));
  JQImageStitching idle;
  EXPECT_EQ(idle.CutEdge(nullptr), nullptr);
  EXPECT_EQ(idle.GetImageStitching(nullptr), nullptr);
}

TEST(Trimming, GivesADeepCopyOfTheContentBox) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  ASSERT_EQ(run.stitcher.GetCurSize(), cv::Size(130, 50));
  EXPECT_TRUE(run.stitcher.CutEdge());
  const _tagJQIMG* shown = run.stitcher.GetImageStitching(AnyRecord().get());
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown->width, 130);
  EXPECT_EQ(shown->height, 50);
  EXPECT_EQ(shown->bytesPerLine, 390);
  EXPECT_EQ(shown->bufferSize, 390u * 50u);
  EXPECT_EQ(shown->pixels, inside::CurFrame(run.stitcher).data);
  const cv::Mat mosaic = run.stitcher.GetMosaic();
  EXPECT_TRUE(SameMatrix(inside::CurFrame(run.stitcher), mosaic(cv::Rect(50, 25, 130, 50))));
  EXPECT_NE(inside::CurFrame(run.stitcher).u, mosaic.u);
}

TEST(Trimming, WithARecordFillsTheStitchersOwn) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  _tagJQIMG* img = AnyRecord().get();
  const _tagJQIMG before = *img;
  const _tagJQIMG* shown = run.stitcher.CutEdge(img);
  EXPECT_EQ(shown, inside::OutImage(run.stitcher));
  EXPECT_NE(shown, img);
  EXPECT_EQ(std::memcmp(img, &before, sizeof before), 0);
  EXPECT_EQ(shown->width, 130);
  EXPECT_EQ(shown->height, 50);
  EXPECT_EQ(shown->channels, 3);
  EXPECT_EQ(shown->bytesPerChannel, 1);
  EXPECT_EQ(shown->format, 0);
  EXPECT_EQ(shown->pixels, inside::CurFrame(run.stitcher).data);
  EXPECT_EQ(shown->reserved0[3], img->reserved0[3]);
}

TEST(Trimming, IsRefusedWhereThereIsAMosaicButNoFrame) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  inside::CurFrame(run.stitcher).release();
  _tagJQIMG* img = AnyRecord().get();
  EXPECT_FALSE(run.stitcher.CutEdge());
  EXPECT_EQ(run.stitcher.CutEdge(img), img);
  EXPECT_EQ(run.stitcher.GetImageStitching(img), nullptr);
}

// After a batch run there is a mosaic, but no record: the first live frame makes it.
TEST(Trimming, WithARecordIsRefusedBeforeTheStitcherHasItsOwn) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  _tagJQIMG* own = inside::OutImage(run.stitcher);
  inside::OutImage(run.stitcher) = nullptr;
  const unsigned char* pixels = inside::CurFrame(run.stitcher).data;
  _tagJQIMG* img = AnyRecord().get();
  EXPECT_EQ(run.stitcher.CutEdge(img), img);
  EXPECT_EQ(run.stitcher.GetImageStitching(img), nullptr);
  EXPECT_EQ(inside::CurFrame(run.stitcher).data, pixels);
  EXPECT_TRUE(run.stitcher.CutEdge());
  inside::OutImage(run.stitcher) = own;
}

TEST(Trimming, BackgroundOfATrimmedMosaicCanBeRecoloured) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 20);
  ASSERT_TRUE(run.stitcher.CutEdge());
  ASSERT_EQ(inside::CurFrame(run.stitcher).at<cv::Vec3b>(0, 129), cv::Vec3b(0, 0, 0));
  EXPECT_TRUE(run.stitcher.ChangeStitchingBackground(10, 20, 30));
  EXPECT_EQ(inside::CurFrame(run.stitcher).at<cv::Vec3b>(0, 129), cv::Vec3b(10, 20, 30));
  EXPECT_EQ(inside::CurFrame(run.stitcher).at<cv::Vec3b>(0, 0), cv::Vec3b::all(100));
  // The mosaic itself keeps its empty pixels.
  EXPECT_EQ(run.stitcher.GetMosaic().at<cv::Vec3b>(0, 0), cv::Vec3b(0, 0, 0));
}

TEST(Output, ImageStitchingCopiesNoPixels) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  const unsigned char* newest = inside::CurFrame(run.stitcher).data;
  EXPECT_EQ(run.stitcher.GetImageStitching(AnyRecord().get())->pixels, newest);
  EXPECT_EQ(run.stitcher.GetImageStitching(AnyRecord().get())->width, 100);
}

TEST(Saving, WritesTheCurrentPicture) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  ASSERT_TRUE(run.stitcher.CutEdge());
  QTemporaryDir folder;
  for (const char* name : {"a.png", "b.bmp", "c.tiff"}) {
    const QString path = folder.filePath(name);
    EXPECT_TRUE(run.stitcher.SaveImageStitching(path));
    EXPECT_TRUE(SameMatrix(cv::imread(path.toStdString(), 1), inside::CurFrame(run.stitcher)));
  }
}

TEST(Saving, WithoutTrimmingWritesTheNewestFrame) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  QTemporaryDir folder;
  const QString path = folder.filePath("frame.png");
  EXPECT_TRUE(run.stitcher.SaveImageStitching(path));
  EXPECT_EQ(cv::imread(path.toStdString(), 1).size(), cv::Size(100, 50));
}

TEST(Saving, EmptyPathIsFalse) {
  FlatRun run(cv::Size(100, 50));
  EXPECT_FALSE(run.stitcher.SaveImageStitching(QString()));
  EXPECT_FALSE(run.stitcher.SaveImageStitching(""));
}

TEST(Saving, PathThatCannotBeWrittenIsFalse) {
  FlatRun run(cv::Size(100, 50));
  QTemporaryDir folder;
  EXPECT_EQ(Ending([&] {
              EXPECT_FALSE(run.stitcher.SaveImageStitching(folder.filePath("no/such/folder.png")));
            }),
            Outcome::kReturned);
}

TEST(Saving, UnknownExtensionRaisesTheImageLibrarysError) {
  FlatRun run(cv::Size(100, 50));
  QTemporaryDir folder;
  EXPECT_EQ(Ending([&] { run.stitcher.SaveImageStitching(folder.filePath("a.unknown")); }),
            Outcome::kImageLibraryError);
  EXPECT_EQ(Ending([&] { run.stitcher.SaveImageStitching(folder.filePath("plain")); }),
            Outcome::kImageLibraryError);
}

// A lone half of a character pair has no form in any local encoding.
TEST(Saving, UnrepresentableNameIsWrittenLossily) {
  FlatRun run(cv::Size(100, 50));
  QTemporaryDir folder;
  const QString path = folder.filePath(QString("half") + QChar(0xD800) + ".png");
  const QByteArray local = path.toLocal8Bit();
  ASSERT_NE(QString::fromLocal8Bit(local), path);
  EXPECT_TRUE(run.stitcher.SaveImageStitching(path));
  EXPECT_EQ(cv::imread(local.toStdString(), 1).size(), cv::Size(100, 50));
}

TEST(Saving, NameEndsAtItsFirstZero) {
  FlatRun run(cv::Size(100, 50));
  QTemporaryDir folder;
  const QString path = folder.filePath("cut.png");
  EXPECT_TRUE(run.stitcher.SaveImageStitching(path + QChar(0) + "more.xyz"));
  EXPECT_TRUE(QFile::exists(path));
}

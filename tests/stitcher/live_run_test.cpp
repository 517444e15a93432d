#include <gtest/gtest.h>

#include <cstring>

#include "flat_run.h"
#include "support/compare.h"
#include "support/scenes.h"

namespace {

// All bytes of a record but the fields that the stitcher writes.
std::vector<unsigned char> HostBytes(const _tagJQIMG& record) {
  _tagJQIMG copy = record;
  copy.width = copy.height = 0;
  copy.bytesPerLine = 0;
  copy.format = copy.channels = copy.bytesPerChannel = 0;
  copy.bufferSize = 0;
  copy.pixels = nullptr;
  const auto* bytes = reinterpret_cast<const unsigned char*>(&copy);
  return std::vector<unsigned char>(bytes, bytes + sizeof copy);
}

cv::Mat Noise(int rows, int cols) {
  RandomSource random(7);
  return pictures::Noise(random, rows, cols, CV_8UC3, 1, 255);
}

}  // namespace

TEST(LiveRun, NullFrameGivesNullAndChangesNothing) {
  JQImageStitching stitcher;
  EXPECT_EQ(stitcher.Stitching(nullptr, 1, 2, 3), nullptr);
  EXPECT_EQ(inside::OutImage(stitcher), nullptr);
  EXPECT_TRUE(inside::CurFrame(stitcher).empty());
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nDetectLevel, 1);

  FlatRun run(cv::Size(100, 50));
  const stitchflags before = run.stitcher.GetStitchFlags();
  EXPECT_EQ(run.stitcher.Stitching(nullptr, 1, 1, 8), nullptr);
  EXPECT_EQ(run.stitcher.GetStitchFlags(), before);
  EXPECT_EQ(run.stitcher.GetFrameCount(), 0);
  EXPECT_NE(inside::OutImage(run.stitcher), nullptr);
}

TEST(LiveRun, FirstFrameIsShown) {
  JQImageStitching stitcher;
  const cv::Mat frame = Noise(30, 40);
  HostRecord record(frame, 5);
  const _tagJQIMG* shown = stitcher.Stitching(record.get(), 0, 1, 8);
  ASSERT_NE(shown, nullptr);
  EXPECT_NE(shown, record.get());
  EXPECT_EQ(shown, inside::OutImage(stitcher));
  EXPECT_EQ(shown->width, 40);
  EXPECT_EQ(shown->height, 30);
  EXPECT_EQ(shown->bytesPerLine, 120);
  EXPECT_EQ(shown->format, 0);
  EXPECT_EQ(shown->channels, 3);
  EXPECT_EQ(shown->bytesPerChannel, 1);
  EXPECT_EQ(shown->bufferSize, 3600u);
  EXPECT_EQ(shown->pixels, inside::CurFrame(stitcher).data);
  EXPECT_EQ(HostBytes(*shown), HostBytes(*record.get()));
  EXPECT_TRUE(SameMatrix(cv::Mat(30, 40, CV_8UC3, shown->pixels), frame));
  EXPECT_EQ(stitcher.GetCurSize(), cv::Size(0, 0));
}

TEST(LiveRun, FirstFrameStartsTheRun) {
  JQImageStitching stitcher;
  inside::StitchStarted(stitcher) = false;
  inside::FrameCount(stitcher) = 9;
  inside::Reserved(stitcher) = 9;
  HostRecord record(Noise(30, 40));
  stitcher.Stitching(record.get(), 5, 3, -2);
  EXPECT_EQ(inside::OverlapMode(stitcher), 5);
  EXPECT_EQ(inside::StitchState(stitcher), 1);
  EXPECT_TRUE(inside::StitchStarted(stitcher));
  EXPECT_EQ(inside::FrameCount(stitcher), 0);
  EXPECT_EQ(inside::Reserved(stitcher), 0);
  EXPECT_EQ(inside::MinOverlap(stitcher), 0.1f);
  EXPECT_EQ(inside::MaxOverlap(stitcher), 0.9f);
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nDetectLevel, 3);
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nCornerBudget, -2);
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nOverlapMode, 5);
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nUsePresets, 1);
  EXPECT_TRUE(inside::Mosaic(stitcher).empty());
  EXPECT_TRUE(stitcher.IsLastFrameAccepted());
  EXPECT_EQ(stitcher.GetFrameCount(), 0);
}

TEST(LiveRun, ZeroSamplesOfAFrameAreLifted) {
  JQImageStitching stitcher;
  cv::Mat frame(30, 40, CV_8UC3, cv::Scalar(0, 1, 2));
  HostRecord record(frame);
  stitcher.Stitching(record.get(), 0, 1, 8);
  EXPECT_EQ(inside::CurFrame(stitcher).at<cv::Vec3b>(3, 4), cv::Vec3b(2, 1, 2));
  // The host's own pixels stay.
  EXPECT_EQ(record.buffer()[0], 0);
}

TEST(LiveRun, TheThreeIntsCountOnTheFirstFrameOnly) {
  FlatRun run(cv::Size(100, 50));
  run.Show(101, 0, 3);
  EXPECT_EQ(inside::OverlapMode(run.stitcher), 1);
  EXPECT_EQ(inside::Algorithm(run.stitcher)->m_nDetectLevel, 1);
  EXPECT_EQ(inside::Algorithm(run.stitcher)->m_nOverlapMode, 1);
}

TEST(LiveRun, SecondFrameMakesTheMosaicAndCountsOne) {
  FlatRun run(cv::Size(100, 50));
  const _tagJQIMG* shown = run.Take(0, 0, 0);
  EXPECT_EQ(run.stitcher.GetMosaic().size(), cv::Size(200, 100));
  EXPECT_EQ(run.stitcher.GetFrameCount(), 1);
  EXPECT_EQ(run.stitcher.GetCurrentPosition(), cv::Point(50, 25));
  EXPECT_EQ(run.stitcher.GetCurSize(), cv::Size(100, 50));
  EXPECT_EQ(run.stitcher.GetCurImageSize(), 100 * 50 * 3);
  EXPECT_EQ(shown->width, 200);
  EXPECT_EQ(shown->height, 100);
  EXPECT_EQ(shown->pixels, run.stitcher.GetMosaic().data);
  EXPECT_FALSE(run.stitcher.IsLastFrameAccepted());
}

TEST(LiveRun, RejectedFrameReplacesThePreviousOneAndKeepsTheCount) {
  FlatRun run(cv::Size(100, 50));
  run.Take(0, 0, 0);
  const cv::Mat reference = inside::RefFrame(run.stitcher).clone();
  const cv::Mat mosaic = run.stitcher.GetMosaic().clone();
  const _tagJQIMG* shown = run.Take(3, 0);
  EXPECT_FALSE(run.stitcher.IsLastFrameAccepted());
  EXPECT_FALSE(inside::LastFrameAccepted(run.stitcher));
  EXPECT_EQ(run.stitcher.GetFrameCount(), 1);
  EXPECT_EQ(inside::CurFrame(run.stitcher).at<cv::Vec3b>(0, 0), cv::Vec3b::all(102));
  EXPECT_TRUE(SameMatrix(inside::RefFrame(run.stitcher), reference));
  EXPECT_TRUE(SameMatrix(run.stitcher.GetMosaic(), mosaic));
  EXPECT_EQ(shown->pixels, run.stitcher.GetMosaic().data);
  // What registration measured stays in the record of a frame that is left out.
  EXPECT_EQ(run.stitcher.GetOffsetPosition(), cv::Point(3, 0));
}

TEST(LiveRun, AcceptedFrameIsPlacedCountedAndItsOffsetCleared) {
  FlatRun run(cv::Size(100, 50));
  run.Take(0, 0, 0);
  run.Take(30, 10);
  EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_TRUE(inside::LastFrameAccepted(run.stitcher));
  EXPECT_EQ(run.stitcher.GetFrameCount(), 2);
  EXPECT_EQ(run.stitcher.GetOffsetPosition(), cv::Point(0, 0));
  EXPECT_TRUE(run.stitcher.IsOffsetPointValid());
  EXPECT_EQ(run.stitcher.GetCurrentPosition(), cv::Point(80, 35));
  EXPECT_EQ(run.stitcher.GetCurSize(), cv::Size(130, 60));
}

// Frame pair 0 is judged like any other: two frames make two.
TEST(LiveRun, SecondFrameCanBeAcceptedAtOnce) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  EXPECT_TRUE(run.stitcher.IsLastFrameAccepted());
  EXPECT_EQ(run.stitcher.GetFrameCount(), 2);
}

TEST(LiveRun, FrameThatFailsTheOverlapTestSkipsTheAcceptanceTest) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  ASSERT_TRUE(inside::LastFrameAccepted(run.stitcher));
  inside::Flags(run.stitcher).offsetX = 30;
  run.TakeTooDifferent();
  EXPECT_EQ(run.stitcher.GetStitchFlags().overlapFlag, 0);
  EXPECT_EQ(run.stitcher.GetFrameCount(), 2);
  // The old verdict stands in the member; the accessor tells the frame's own.
  EXPECT_TRUE(inside::LastFrameAccepted(run.stitcher));
  EXPECT_FALSE(run.stitcher.IsLastFrameAccepted());
}

TEST(LiveRun, TheRecordIsAlwaysTheSame) {
  FlatRun run(cv::Size(100, 50));
  const _tagJQIMG* first = inside::OutImage(run.stitcher);
  EXPECT_EQ(run.Take(0, 0, 0), first);
  EXPECT_EQ(run.Take(30, 0), first);
}

TEST(LiveRun, LaterRecordsCarryTheHostsBytesOfTheirOwnFrame) {
  FlatRun run(cv::Size(100, 50));
  HostRecord record(cv::Mat(50, 100, CV_8UC3, cv::Scalar::all(100)), 0, 0x11);
  const _tagJQIMG* shown = run.stitcher.Stitching(record.get(), 1, 1, 8);
  EXPECT_EQ(HostBytes(*shown), HostBytes(*record.get()));
}

TEST(LiveRun, TheStitchersOwnRecordCanBeHandedBack) {
  FlatRun run(cv::Size(100, 50));
  _tagJQIMG* own = inside::OutImage(run.stitcher);
  const _tagJQIMG* shown = run.stitcher.Stitching(own, 1, 1, 8);
  EXPECT_EQ(shown, own);
  EXPECT_EQ(shown->width, 200);
  EXPECT_EQ(shown->height, 100);
  EXPECT_EQ(inside::CurFrame(run.stitcher).size(), cv::Size(100, 50));
  EXPECT_EQ(run.stitcher.GetImageStitching(own), own);
  EXPECT_EQ(own->width, 100);
}

TEST(LiveRun, FrameMayBeReusedByTheHostAtOnce) {
  JQImageStitching stitcher;
  HostRecord record(cv::Mat(30, 40, CV_8UC3, cv::Scalar::all(9)));
  stitcher.Stitching(record.get(), 0, 1, 8);
  std::fill(record.buffer().begin(), record.buffer().end(), 77);
  EXPECT_EQ(inside::CurFrame(stitcher).at<cv::Vec3b>(10, 10), cv::Vec3b::all(9));
}

// The frame is 40000 pixels wide, so the mosaic that shows next is 80000.
TEST(LiveRun, WidthBeyond65535IsCutTo16Bits) {
  FlatRun run(cv::Size(40000, 2));
  const _tagJQIMG* shown = run.Take(0, 0, 0);
  EXPECT_EQ(run.stitcher.GetMosaic().size(), cv::Size(80000, 4));
  EXPECT_EQ(shown->width, 80000 - 65536);
  EXPECT_EQ(shown->height, 4);
  EXPECT_EQ(shown->bytesPerLine, (80000 - 65536) * 3);
  EXPECT_EQ(shown->bufferSize, (80000u - 65536u) * 3u * 4u);
  EXPECT_EQ(shown->pixels, run.stitcher.GetMosaic().data);
}

TEST(LiveRun, HeightBeyond65535IsCutTo16Bits) {
  FlatRun run(cv::Size(2, 40000));
  const _tagJQIMG* shown = run.Take(0, 0, 0);
  EXPECT_EQ(shown->width, 4);
  EXPECT_EQ(shown->height, 80000 - 65536);
  EXPECT_EQ(shown->bufferSize, (80000u - 65536u) * 3u * 4u);
}

TEST(LiveRun, NothingResetsARun) {
  FlatRun run(cv::Size(100, 50));
  run.Take(30, 0);
  run.Take(0, 0, 0);
  EXPECT_EQ(run.stitcher.GetFrameCount(), 2);
}

// A host that mixes a canvas with a live run is told so instead of crashing.
TEST(LiveRun, RunOnAFilledCanvasIsRefused) {
  JQImageStitching stitcher;
  cv::Mat frame = Noise(30, 40);
  stitcher.initResultMat(&frame);
  HostRecord record(frame);
  EXPECT_THROW(stitcher.Stitching(record.get(), 0, 1, 8), cv::Exception);
  EXPECT_EQ(inside::OutImage(stitcher), nullptr);
}

TEST(LiveRun, GreyAndDeepFramesAreTakenInColour) {
  for (const int type : {CV_8UC1, CV_8UC4, CV_16UC1, CV_16UC3, CV_16UC4}) {
    JQImageStitching stitcher;
    const cv::Mat frame(30, 40, type, cv::Scalar::all(CV_MAT_DEPTH(type) == CV_8U ? 7 : 0x0703));
    HostRecord record(frame, 3);
    const _tagJQIMG* shown = stitcher.Stitching(record.get(), 0, 1, 8);
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->channels, 3);
    EXPECT_EQ(shown->bytesPerChannel, 1);
    EXPECT_TRUE(
        SameMatrix(inside::CurFrame(stitcher), cv::Mat(30, 40, CV_8UC3, cv::Scalar::all(7))));
  }
}

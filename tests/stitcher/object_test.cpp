#include <gtest/gtest.h>
#include <climits>

#include <type_traits>

#include "support/stitcher_access.h"

TEST(StitcherObject, FreshOneReportsNothing) {
  JQImageStitching stitcher;
  EXPECT_EQ(stitcher.GetCurSize(), cv::Size(0, 0));
  EXPECT_EQ(stitcher.GetCurImageSize(), 0);
  EXPECT_EQ(stitcher.GetCurrentPosition(), cv::Point(0, 0));
  EXPECT_EQ(stitcher.GetOffsetPosition(), cv::Point(0, 0));
  EXPECT_FALSE(stitcher.IsOffsetPointValid());
  EXPECT_EQ(stitcher.parent(), nullptr);
}

TEST(StitcherObject, FreshAdditionsReportNothing) {
  JQImageStitching stitcher;
  EXPECT_FALSE(stitcher.IsLastFrameAccepted());
  EXPECT_EQ(stitcher.GetFrameCount(), 0);
  EXPECT_TRUE(stitcher.GetMosaic().empty());
  EXPECT_EQ(stitcher.GetContentMin(), cv::Point(0, 0));
  EXPECT_EQ(stitcher.GetContentMax(), cv::Point(0, 0));
  EXPECT_EQ(stitcher.GetPlacedBounds(), cv::Rect());
  const stitchflags flags = stitcher.GetStitchFlags();
  EXPECT_EQ(flags.matchCount, 0);
  EXPECT_EQ(flags.offsetX, 0);
  EXPECT_EQ(flags.offsetY, 0);
  EXPECT_EQ(flags.positionX, 0);
  EXPECT_EQ(flags.positionY, 0);
  EXPECT_EQ(flags.overlapFlag, 0);
}

TEST(StitcherObject, DefaultsOfTheCanvasState) {
  const JQImageStitching stitcher;
  EXPECT_EQ(stitcher.m_canvasRows, 10000);
  EXPECT_EQ(stitcher.m_canvasCols, 10000);
  EXPECT_EQ(stitcher.m_frameSize, cv::Size(5000, 5000));
  EXPECT_EQ(stitcher.m_framePos, cv::Point(0, 0));
  EXPECT_EQ(stitcher.m_frameRows, 0);
  EXPECT_EQ(stitcher.m_frameCols, 0);
  EXPECT_EQ(stitcher.m_frameOffset, cv::Point(0, 0));
  for (const JQStitchingRect& rect : {stitcher.m_cutRect, stitcher.m_contentRect}) {
    EXPECT_EQ(rect.x1, 0);
    EXPECT_EQ(rect.y1, 0);
    EXPECT_EQ(rect.x2, 0);
    EXPECT_EQ(rect.y2, 0);
  }
  EXPECT_TRUE(stitcher.m_resultMat.empty());
  EXPECT_TRUE(stitcher.m_fileList.isEmpty());
}

TEST(StitcherObject, DefaultsOfTheRunState) {
  JQImageStitching stitcher;
  ASSERT_NE(inside::Algorithm(stitcher), nullptr);
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nDetectLevel, 1);
  EXPECT_EQ(inside::Algorithm(stitcher)->m_nCornerBudget, 8);
  EXPECT_EQ(inside::CanvasOrigin(stitcher), cv::Point(0, 0));
  EXPECT_EQ(inside::LastOffset(stitcher), cv::Point(0, 0));
  EXPECT_TRUE(inside::CurFrame(stitcher).empty());
  EXPECT_TRUE(inside::LastFrameAccepted(stitcher));
  EXPECT_TRUE(inside::StitchStarted(stitcher));
  EXPECT_EQ(inside::FrameCount(stitcher), 0);
  EXPECT_EQ(inside::Reserved(stitcher), 0);
  EXPECT_TRUE(inside::RefFrame(stitcher).empty());
  EXPECT_EQ(inside::OutImage(stitcher), nullptr);
  EXPECT_TRUE(inside::SpareMat(stitcher).empty());
  EXPECT_EQ(inside::MosaicMin(stitcher), cv::Point(0, 0));
  EXPECT_EQ(inside::MosaicMax(stitcher), cv::Point(0, 0));
  EXPECT_TRUE(inside::Mosaic(stitcher).empty());
}

// Host code lays plain structures over these.
TEST(StitcherObject, TypesOfTheCanvasState) {
  static_assert(sizeof(JQStitchingRect) == 16, "four ints");
  static_assert(std::is_standard_layout<JQStitchingRect>::value, "");
  static_assert(std::is_same<decltype(JQImageStitching::m_fileList), QList<QString>>::value, "");
  static_assert(std::is_base_of<QObject, JQImageStitching>::value, "");
  static_assert(!std::is_copy_constructible<JQImageStitching>::value, "");
}

// A host compiled against an older header of this version reads and writes these where
// they were: after the base (two pointers), one pointer and one point, each member at its
// size's multiple.
TEST(StitcherObject, TheMembersStayWhereTheyWere) {
  if (sizeof(void*) != 8) GTEST_SKIP() << "the offsets are those of 64-bit systems";
  ASSERT_EQ(sizeof(QObject), 16u);
  ASSERT_EQ(sizeof(cv::Mat), 96u);
  const JQImageStitching stitcher;
  const auto offset = [&](const auto& member) {
    return reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&stitcher);
  };
  EXPECT_EQ(offset(stitcher.m_canvasRows), 32);
  EXPECT_EQ(offset(stitcher.m_canvasCols), 36);
  EXPECT_EQ(offset(stitcher.m_frameSize), 40);
  EXPECT_EQ(offset(stitcher.m_framePos), 48);
  EXPECT_EQ(offset(stitcher.m_frameRows), 56);
  EXPECT_EQ(offset(stitcher.m_frameCols), 60);
  EXPECT_EQ(offset(stitcher.m_frameOffset), 72);
  EXPECT_EQ(offset(stitcher.m_cutRect), 80);
  EXPECT_EQ(offset(stitcher.m_contentRect), 96);
  EXPECT_EQ(offset(stitcher.m_resultMat), 208);
  EXPECT_EQ(offset(stitcher.m_fileList), 424);
  // The list, a matrix, a word, two points, two, four numbers and one pointer more.
  EXPECT_EQ(sizeof stitcher, 424 + sizeof(QList<QString>) + 96 + 8 + 16 + 96 + 8 + 16 + 8);
}

TEST(StitcherObject, TenMatchesAreNoValidOffset) {
  JQImageStitching stitcher;
  inside::Flags(stitcher) = {10, 33, -44, 5, 6, 1};
  EXPECT_FALSE(stitcher.IsOffsetPointValid());
  EXPECT_EQ(stitcher.GetOffsetPosition(), cv::Point(0, 0));
}

TEST(StitcherObject, ElevenMatchesAreAValidOffset) {
  JQImageStitching stitcher;
  inside::Flags(stitcher) = {11, 33, -44, 5, 6, 1};
  EXPECT_TRUE(stitcher.IsOffsetPointValid());
  EXPECT_EQ(stitcher.GetOffsetPosition(), cv::Point(33, -44));
}

TEST(StitcherObject, PositionIsTheRecordsWhateverTheMatches) {
  JQImageStitching stitcher;
  inside::Flags(stitcher) = {0, 33, -44, 5, 6, 0};
  EXPECT_EQ(stitcher.GetCurrentPosition(), cv::Point(5, 6));
}

TEST(StitcherObject, SizesComeFromTheContentBox) {
  JQImageStitching stitcher;
  inside::MosaicMin(stitcher) = cv::Point(3, 4);
  inside::MosaicMax(stitcher) = cv::Point(13, 24);
  EXPECT_EQ(stitcher.GetCurSize(), cv::Size(10, 20));
  EXPECT_EQ(stitcher.GetCurImageSize(), 600);
  EXPECT_EQ(stitcher.GetContentMin(), cv::Point(3, 4));
  EXPECT_EQ(stitcher.GetContentMax(), cv::Point(13, 24));
}

// 30000 * 30000 * 3 = 2700000000 is 2700000000 - 2^32 as a 32-bit number.
TEST(StitcherObject, SizesBeyond32BitsWrap) {
  JQImageStitching stitcher;
  inside::MosaicMax(stitcher) = cv::Point(30000, 30000);
  EXPECT_EQ(stitcher.GetCurImageSize(), -1594967296);
  inside::MosaicMin(stitcher) = cv::Point(INT_MIN, -1);
  inside::MosaicMax(stitcher) = cv::Point(1, INT_MAX);
  EXPECT_EQ(stitcher.GetCurSize(), cv::Size(INT_MIN + 1, INT_MIN));
}

TEST(StitcherObject, StitchRecordIsGivenByValue) {
  JQImageStitching stitcher;
  inside::Flags(stitcher) = {1, 2, 3, 4, 5, 6};
  stitchflags copy = stitcher.GetStitchFlags();
  ++copy.matchCount;
  EXPECT_EQ(copy.matchCount, 2);
  EXPECT_EQ(stitcher.GetStitchFlags().matchCount, 1);
  EXPECT_EQ(stitcher.GetStitchFlags().overlapFlag, 6);
}

#ifndef JQ_TESTS_STITCHER_TWIN_COMPARE_H
#define JQ_TESTS_STITCHER_TWIN_COMPARE_H

#include <gtest/gtest.h>

#include <cstring>

#include "reference/stitcher.h"
#include "support/compare.h"
#include "support/stitcher_access.h"

/// What a stitcher and its plain twin both consist of, so that the two are compared
/// field by field. The matrices are headers unless `Clone` is called.
struct StitcherView {
  cv::Mat mosaic, reference, current;
  cv::Point min, max, position, offset;
  cv::Size size;
  int bytes = 0;
  stitchflags flags;
  int frameCount = 0, reserved = 0;
  bool valid = false, verdict = false, started = false, placed = false;
  int pairCount = 0;
  cv::Rect bounds;
  bool hasRecord = false;
  _tagJQIMG record = {};  // without the pointer
  bool showsMosaic = false, showsCurrent = false;
  bool referenceIsCurrent = false;

  void Clone() {
    mosaic = mosaic.clone();
    reference = reference.clone();
    current = current.clone();
  }
};

namespace view_detail {

inline void Relations(StitcherView& view, const _tagJQIMG* record) {
  view.referenceIsCurrent =
      view.current.data != nullptr && view.current.data == view.reference.data;
  view.hasRecord = record != nullptr;
  if (record == nullptr) return;
  view.record = *record;
  view.showsMosaic = record->pixels != nullptr && record->pixels == view.mosaic.data;
  view.showsCurrent = record->pixels != nullptr && record->pixels == view.current.data;
  view.record.pixels = nullptr;
}

}  // namespace view_detail

inline StitcherView ViewOf(JQImageStitching& s) {
  StitcherView view;
  view.mosaic = s.GetMosaic();
  view.reference = inside::RefFrame(s);
  view.current = inside::CurFrame(s);
  view.min = s.GetContentMin();
  view.max = s.GetContentMax();
  view.position = s.GetCurrentPosition();
  view.offset = s.GetOffsetPosition();
  view.size = s.GetCurSize();
  view.bytes = s.GetCurImageSize();
  view.flags = s.GetStitchFlags();
  view.frameCount = s.GetFrameCount();
  view.reserved = inside::Reserved(s);
  view.valid = s.IsOffsetPointValid();
  view.verdict = inside::LastFrameAccepted(s);
  view.started = inside::StitchStarted(s);
  view.placed = s.IsLastFrameAccepted();
  view.pairCount = s.GetLastVerdict().pairCount;
  view.bounds = s.GetPlacedBounds();
  view_detail::Relations(view, inside::OutImage(s));
  return view;
}

inline StitcherView ViewOf(reference::Stitcher& s) {
  StitcherView view;
  view.mosaic = s.m_mosaic;
  view.reference = s.m_refFrame;
  view.current = s.m_curFrame;
  view.min = s.m_mosaicMin;
  view.max = s.m_mosaicMax;
  view.position = s.GetCurrentPosition();
  view.offset = s.GetOffsetPosition();
  view.size = s.GetCurSize();
  view.bytes = s.GetCurImageSize();
  view.flags = s.m_algorithm.m_stitchFlags;
  view.frameCount = s.m_nFrameCount;
  view.reserved = s.m_nReserved;
  view.valid = s.IsOffsetPointValid();
  view.verdict = s.m_bLastFrameAccepted;
  view.started = s.m_bStitchStarted;
  view.placed = s.m_lastFramePlaced;
  view.pairCount = s.m_algorithm.m_pairCount;
  view.bounds = s.GetPlacedBounds();
  view_detail::Relations(view, s.m_pOutImage.get());
  return view;
}

inline void ExpectSame(const StitcherView& actual, const StitcherView& expected) {
  EXPECT_EQ(actual.flags, expected.flags);
  EXPECT_EQ(actual.frameCount, expected.frameCount);
  EXPECT_EQ(actual.reserved, expected.reserved);
  EXPECT_EQ(actual.placed, expected.placed);
  EXPECT_EQ(actual.pairCount, expected.pairCount);
  EXPECT_EQ(actual.verdict, expected.verdict);
  EXPECT_EQ(actual.started, expected.started);
  EXPECT_EQ(actual.valid, expected.valid);
  EXPECT_EQ(actual.offset, expected.offset);
  EXPECT_EQ(actual.position, expected.position);
  EXPECT_EQ(actual.min, expected.min);
  EXPECT_EQ(actual.max, expected.max);
  EXPECT_EQ(actual.size, expected.size);
  EXPECT_EQ(actual.bytes, expected.bytes);
  EXPECT_EQ(actual.bounds, expected.bounds);
  EXPECT_TRUE(SameMatrix(actual.mosaic, expected.mosaic)) << "mosaic";
  EXPECT_TRUE(SameMatrix(actual.reference, expected.reference)) << "reference";
  // The type of an empty matrix is no state.
  EXPECT_EQ(actual.current.empty(), expected.current.empty());
  if (!expected.current.empty()) {
    EXPECT_TRUE(SameMatrix(actual.current, expected.current)) << "current frame";
  }
  EXPECT_EQ(actual.referenceIsCurrent, expected.referenceIsCurrent);
  EXPECT_EQ(actual.hasRecord, expected.hasRecord);
  EXPECT_EQ(std::memcmp(&actual.record, &expected.record, sizeof actual.record), 0) << "record";
  EXPECT_EQ(actual.showsMosaic, expected.showsMosaic);
  EXPECT_EQ(actual.showsCurrent, expected.showsCurrent);
}

#endif  // JQ_TESTS_STITCHER_TWIN_COMPARE_H

#ifndef JQ_TESTS_STITCHER_RUN_STATE_H
#define JQ_TESTS_STITCHER_RUN_STATE_H

#include <gtest/gtest.h>

#include <cstring>

#include "support/compare.h"
#include "support/stitcher_access.h"

/// A deep copy of what a run consists of. The verdict on the newest frame is no part of
/// it: a call that fails says so there.
class RunState {
 public:
  enum Extent { kWithoutCurrentFrame, kWithCurrentFrame };

  explicit RunState(JQImageStitching& stitcher)
      : m_mosaic(stitcher.GetMosaic().clone()),
        m_reference(inside::RefFrame(stitcher).clone()),
        m_current(inside::CurFrame(stitcher).clone()),
        m_min(stitcher.GetContentMin()),
        m_max(stitcher.GetContentMax()),
        m_bounds(stitcher.GetPlacedBounds()),
        m_flags(stitcher.GetStitchFlags()),
        m_frameCount(stitcher.GetFrameCount()),
        m_reserved(inside::Reserved(stitcher)),
        m_verdict(inside::LastFrameAccepted(stitcher)) {
    if (inside::OutImage(stitcher) != nullptr) m_record = *inside::OutImage(stitcher);
    m_record.pixels = nullptr;
  }

  const stitchflags& flags() const { return m_flags; }

  /// The record's pixel pointer is compared by whether it still shows the
  /// stitcher's own pixels.
  ::testing::AssertionResult IsStillThatOf(JQImageStitching& stitcher, Extent extent) const {
    const RunState now(stitcher);
    if (auto same = SameMatrix(now.m_mosaic, m_mosaic); !same) return same << " in the mosaic";
    if (auto same = SameMatrix(now.m_reference, m_reference); !same)
      return same << " in the reference";
    if (extent == kWithCurrentFrame) {
      if (auto same = SameMatrix(now.m_current, m_current); !same)
        return same << " in the current frame";
    }
    if (now.m_min != m_min || now.m_max != m_max)
      return ::testing::AssertionFailure() << "the content box differs";
    if (now.m_bounds != m_bounds)
      return ::testing::AssertionFailure()
             << "the placed bounds are " << now.m_bounds << " instead of " << m_bounds;
    if (!(now.m_flags == m_flags)) return ::testing::AssertionFailure() << "the stitch record";
    if (now.m_frameCount != m_frameCount || now.m_reserved != m_reserved)
      return ::testing::AssertionFailure() << "the counters differ";
    if (now.m_verdict != m_verdict)
      return ::testing::AssertionFailure() << "the result of the last acceptance test differs";
    if (std::memcmp(&now.m_record, &m_record, sizeof m_record) != 0)
      return ::testing::AssertionFailure() << "the image record differs";
    const _tagJQIMG* shown = inside::OutImage(stitcher);
    if (shown != nullptr && shown->pixels != stitcher.GetMosaic().data &&
        shown->pixels != inside::CurFrame(stitcher).data)
      return ::testing::AssertionFailure() << "the image record shows other pixels";
    return ::testing::AssertionSuccess();
  }

 private:
  cv::Mat m_mosaic, m_reference, m_current;
  cv::Point m_min, m_max;
  cv::Rect m_bounds;
  stitchflags m_flags;
  int m_frameCount, m_reserved;
  bool m_verdict;
  _tagJQIMG m_record = {};
};

#endif  // JQ_TESTS_STITCHER_RUN_STATE_H

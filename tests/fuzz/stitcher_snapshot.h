#ifndef JQ_TESTS_FUZZ_STITCHER_SNAPSHOT_H
#define JQ_TESTS_FUZZ_STITCHER_SNAPSHOT_H

#include <cstring>

#include "jqimagestitching.h"
#include "require.h"

/// Whether two matrices hold the same bytes.
inline bool SameBytes(const cv::Mat& a, const cv::Mat& b) {
  if (a.size() != b.size() || a.type() != b.type()) return false;
  const std::size_t row = a.empty() ? 0 : static_cast<std::size_t>(a.cols) * a.elemSize();
  for (int r = 0; r < a.rows; ++r) {
    if (std::memcmp(a.ptr(r), b.ptr(r), row) != 0) return false;
  }
  return true;
}

/// What a host can see of a run, to be compared with what it sees later.
class StitcherSnapshot {
 public:
  explicit StitcherSnapshot(const JQImageStitching& stitcher)
      : m_mosaic(stitcher.GetMosaic().clone()),
        m_min(stitcher.GetContentMin()),
        m_max(stitcher.GetContentMax()),
        m_position(stitcher.GetCurrentPosition()),
        m_bounds(stitcher.GetPlacedBounds()),
        m_frameCount(stitcher.GetFrameCount()),
        m_undoCount(stitcher.GetUndoCount()),
        m_record(stitcher.GetStitchFlags()),
        m_cause(stitcher.GetLastVerdict().cause) {}

  bool hasSameMosaic(const JQImageStitching& stitcher) const {
    return SameBytes(stitcher.GetMosaic(), m_mosaic);
  }

  void requireUnchanged(const JQImageStitching& stitcher) const {
    Require(hasSameMosaic(stitcher), "the mosaic is as it was");
    Require(stitcher.GetContentMin() == m_min && stitcher.GetContentMax() == m_max,
            "the content box is as it was");
    Require(stitcher.GetCurrentPosition() == m_position, "the position is as it was");
    Require(stitcher.GetPlacedBounds() == m_bounds, "the placed bounds are as they were");
    Require(stitcher.GetFrameCount() == m_frameCount, "the counter is as it was");
  }

  /// After a step back: the stitch record and the verdict too, which a call leaves.
  void requireRestored(const JQImageStitching& stitcher) const {
    requireUnchanged(stitcher);
    const stitchflags now = stitcher.GetStitchFlags();
    Require(std::memcmp(&now, &m_record, sizeof now) == 0, "the stitch record is as it was");
    Require(stitcher.GetLastVerdict().cause == m_cause, "the verdict is as it was");
  }

  bool hasMosaic() const { return !m_mosaic.empty(); }
  int frameCount() const { return m_frameCount; }
  int undoCount() const { return m_undoCount; }

 private:
  cv::Mat m_mosaic;
  cv::Point m_min, m_max, m_position;
  cv::Rect m_bounds;
  int m_frameCount, m_undoCount;
  stitchflags m_record;
  JQFrameCause m_cause;
};

#endif  // JQ_TESTS_FUZZ_STITCHER_SNAPSHOT_H

#ifndef JQ_TESTS_STITCHER_FLAT_RUN_H
#define JQ_TESTS_STITCHER_FLAT_RUN_H

#include "support/host_record.h"
#include "support/stitcher_access.h"

/// A live run whose verdicts are set by the test: an even frame has no corners,
/// so registration leaves the record as it is, and two even frames pass the
/// motion test. What the test writes into the record is what the frame is judged
/// by.
class FlatRun {
 public:
  explicit FlatRun(cv::Size size, int detectLevel = 1) : m_size(size) {
    Show(kFirstLevel, 1, detectLevel);
  }

  /// The next frame with these registration results.
  _tagJQIMG* Take(int offsetX, int offsetY, int matchCount = 11) {
    inside::Flags(stitcher).offsetX = offsetX;
    inside::Flags(stitcher).offsetY = offsetY;
    inside::Flags(stitcher).matchCount = matchCount;
    return Show(++m_level, 1, 1);
  }
  /// A frame that the motion test turns down: much brighter than the last.
  _tagJQIMG* TakeTooDifferent() { return Show(200, 1, 1); }

  _tagJQIMG* Show(int level, int mode, int detectLevel) {
    const cv::Mat frame(m_size, CV_8UC3, cv::Scalar::all(level));
    HostRecord record(frame);
    return stitcher.Stitching(record.get(), mode, detectLevel, 8);
  }

  static constexpr int kFirstLevel = 100;
  JQImageStitching stitcher;

 private:
  cv::Size m_size;
  int m_level = kFirstLevel;  // one grey level more for every frame, to tell them apart
};

#endif  // JQ_TESTS_STITCHER_FLAT_RUN_H

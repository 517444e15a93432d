#ifndef JQ_STITCHER_RUN_STATE_H
#define JQ_STITCHER_RUN_STATE_H

#include <opencv2/core.hpp>

#include "jqimagestitching.h"

/// What the stitcher knows of a run beyond its members: the answers of the
/// accessors that tell what became of a frame.
struct JQImageStitching::RunState {
  bool lastFramePlaced = false;
  cv::Rect placedBounds;

  /// Takes one later frame of a run: judges and registers it and, when it passes,
  /// places it. Returns whether the acceptance test ran. All or nothing: when
  /// it throws, the stitcher is as before.
  static bool takeFrame(JQImageStitching& stitcher, cv::Mat& newFrame, bool& accepted);

 private:
  static bool isAccepted(const JQImageStitching& stitcher, const cv::Mat& newFrame);
  static void place(JQImageStitching& stitcher, cv::Mat& newFrame);
};

#endif  // JQ_STITCHER_RUN_STATE_H

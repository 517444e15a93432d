#ifndef JQ_OVERLAP_FRAME_TESTS_H
#define JQ_OVERLAP_FRAME_TESTS_H

#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"
#include "overlap/frame_measures.h"

namespace jqstitching {

/// The new frame of a call at the working scale.
struct NewFrame {
  cv::Mat picture;
  /// Whether it and the reference are of the kind for which grey pictures are made
  /// once, by the test, and taken over by the registration.
  bool shared = false;
  const GreyAndHalf* grey = nullptr;  ///< null until they are made
};

/// The overlap test: arms its thresholds and compares the frame with the mosaic at
/// the record's position and offset. Returns whether the frame is fit.
bool FitsMosaic(JQStitchingAlgorithm& engine, Workspace& workspace, const cv::Mat& mosaic,
                const stitchflags& record, NewFrame& frame, FrameMeasures& measures);

/// The motion test: arms its threshold and compares the frame with the previous one.
bool FitsPrevious(JQStitchingAlgorithm& engine, Workspace& workspace, const cv::Mat& previous,
                  NewFrame& frame, FrameMeasures& measures);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_FRAME_TESTS_H

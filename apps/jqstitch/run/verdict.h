#ifndef JQSTITCH_RUN_VERDICT_H
#define JQSTITCH_RUN_VERDICT_H

#include <functional>
#include <opencv2/core.hpp>

#include "jqstitchingalgorithm.h"
#include "run/frame_result.h"

namespace jqstitch {

/// The parameters of a run, as the stitcher got them.
struct StitchSettings {
  int overlapMode = 0;
  int detectLevel = 1;
  int cornerBudget = 8;
  bool usePresets = true;
};

/// Whether the stitcher can find corners in a frame (as taken in, full size),
/// found out with an engine of our own: the stitcher's record keeps an earlier
/// frame's values where a frame has no corners.
bool HasCorners(const cv::Mat& frame, const StitchSettings& settings);

/// Fills the measurements of a judged frame: matches, offset and shift.
/// @param frame full size of the frames
void FillMeasurements(const stitchflags& flags, cv::Size frame, const StitchSettings& settings,
                      FrameResult& result);

/// Says why the stitcher left a frame out: its tests in its order, but the
/// missing corners first, because nothing was measured without them.
/// @param hasCorners, referenceHasCorners asked only when needed
void ExplainLeftOut(const stitchflags& flags, cv::Size frame, const StitchSettings& settings,
                    const std::function<bool()>& hasCorners,
                    const std::function<bool()>& referenceHasCorners, FrameResult& result);

/// The verdicts that the host reaches without the stitcher.
void ExplainUnreadable(const std::string& why, FrameResult& result);
void ExplainSize(cv::Size size, cv::Size expected, FrameResult& result);
void ExplainFailure(const std::string& what, FrameResult& result);
void ExplainNotReached(const std::string& why, FrameResult& result);

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_VERDICT_H

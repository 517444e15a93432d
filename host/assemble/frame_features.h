#ifndef JQHOST_ASSEMBLE_FRAME_FEATURES_H
#define JQHOST_ASSEMBLE_FRAME_FEATURES_H

#include <opencv2/core.hpp>
#include <vector>

#include "jqstitchingalgorithm.h"

namespace jqhost {

/// What the engine looks for in one frame before it compares two. Found once, it serves
/// every pair that the frame is part of; 0.2 MB with 500 corners.
struct FrameFeatures {
  std::vector<cv::Point> corners;
  cv::Mat descriptors;  ///< one row for each corner; empty where there is none
};

/// @param frame at the working scale, 8 bits, 3 channels or 1
FrameFeatures FindFeatures(JQStitchingAlgorithm& engine, const cv::Mat& frame);

/// The shift between two frames.
struct PairMeasure {
  cv::Point shift;        ///< column and row of the first at which pixel (0, 0) of the second lies
  cv::Point2d fineShift;  ///< mean over the matches within 4 pixels of it
  int matches = 0;        ///< that agree with `shift`
  int matched = 0;        ///< corners of the second that found a partner
};

/// What `ImageMosaicFun` gives for the two frames, from their features: same shift, same
/// number of matches (0 where it leaves its outputs as they were).
///
/// The engine's shift is that of a single match, and below level 3 an even number, because
/// it looks for corners in the halved frame. A chain of frames adds these roundings up, so
/// the mean of all agreeing matches is taken beside it: within a tenth of a pixel or two
/// where some dozens agree. Starting from the engine's shift, the mean is taken three times,
/// each time over the matches within 4 pixels of the last one.
PairMeasure MeasureShift(JQStitchingAlgorithm& engine, const FrameFeatures& first,
                         const FrameFeatures& second);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_FRAME_FEATURES_H

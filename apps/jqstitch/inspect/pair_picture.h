#ifndef JQSTITCH_INSPECT_PAIR_PICTURE_H
#define JQSTITCH_INSPECT_PAIR_PICTURE_H

#include <opencv2/core.hpp>
#include <string>

#include "inspect/pair_analysis.h"

namespace jqstitch {

struct PictureSettings {
  std::string nameFirst, nameSecond;
  int width = 1600;  ///< of the whole picture, pixels
  int lines = 40;    ///< at most so many lines of each kind; more hide the frames
};

/// Draws the analysis for people who would rather look than read:
///
///     verdict
///     A with corners ---- matches ---- B with corners
///     legend
///     fused result         weight map
///     legend
///
/// Inliers are solid and blue-green with round ends, outliers dashed and
/// vermilion with crosses, so that neither colour nor style is needed alone.
cv::Mat DrawPair(const PairAnalysis& pair, const PictureSettings& settings);

}  // namespace jqstitch

#endif  // JQSTITCH_INSPECT_PAIR_PICTURE_H

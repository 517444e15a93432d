#ifndef JQSTITCH_INSPECT_PAIR_ANALYSIS_H
#define JQSTITCH_INSPECT_PAIR_ANALYSIS_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "host/run/stitch_settings.h"

namespace jqstitch {

/// Everything that a live run finds out about its second frame B when A was the
/// first. Sizes and positions are in the working scale (the frame divided by the
/// detection level).
struct PairAnalysis {
  cv::Mat first, second;  ///< as registered: scaled, zero samples lifted
  std::vector<cv::Point> cornersFirst, cornersSecond;
  std::vector<cv::Point> matchedFirst, matchedSecond;  ///< element k matches element k
  std::vector<bool> inlier;                            ///< of each match
  cv::Point offset;                                    ///< a point of B lies here further in A
  int support = 0;                                     ///< matches that agree with the offset

  bool overlapFit = false;   ///< the overlap or motion test passed
  std::string overlapWords;  ///< what was measured, and the limits

  // The union of both frames, empty unless there is an offset and they overlap.
  cv::Mat fused;                      ///< `CV_8UC3`, black where neither frame is
  cv::Mat weight;                     ///< `CV_8UC1` weight of A where B lies, size of B
  cv::Point placeFirst, placeSecond;  ///< top-left corners in `fused`

  bool accepted = false;
  std::string verdict;  ///< one sentence: what would become of B, and why
};

/// Runs the steps of the engine on two frames of one size, `CV_8UC3`. The frames
/// keep their pixels.
PairAnalysis AnalysePair(const cv::Mat& first, const cv::Mat& second,
                         const jqhost::StitchSettings& settings);

}  // namespace jqstitch

#endif  // JQSTITCH_INSPECT_PAIR_ANALYSIS_H

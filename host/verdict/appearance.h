#ifndef JQHOST_VERDICT_APPEARANCE_H
#define JQHOST_VERDICT_APPEARANCE_H

#include <opencv2/core.hpp>

namespace jqhost {

/// How a frame looks beside the picture at the place where it was measured. The
/// stitcher's overlap test looks where the previous measurement pointed; only at the
/// frame's own place can another exposure or focus be told from another view.
struct Appearance {
  double brightness = 1;  ///< mean of the frame over that of the picture
  double sharpness = 1;   ///< fine detail of the frame over that of the picture
};

/// Compares two views of one place, `CV_8UC3` of one size. Fine detail is the mean
/// magnitude of the Laplacian of the grey values, each picture divided by its mean so
/// that another exposure does not count as another focus.
Appearance CompareAppearance(const cv::Mat& picture, const cv::Mat& frame);

}  // namespace jqhost

#endif  // JQHOST_VERDICT_APPEARANCE_H

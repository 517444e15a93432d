#ifndef JQHOST_FLAT_SMOOTH_SURFACE_H
#define JQHOST_FLAT_SMOOTH_SURFACE_H

#include <opencv2/core.hpp>

namespace jqhost {

/// A smooth surface through the cells of a grid (`CV_64FC1`), at the pixels of a
/// picture of this size that the grid covers: a polynomial of the second degree by
/// least squares, plus what it leaves, smoothed with a Gaussian of 1/6 of the grid.
/// (With more terms or a narrower Gaussian, what few frames show gets in.)
cv::Mat SmoothSurface(const cv::Mat& cells, cv::Size picture);

}  // namespace jqhost

#endif  // JQHOST_FLAT_SMOOTH_SURFACE_H

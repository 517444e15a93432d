#ifndef JQHOST_SIMULATE_SOFT_PAINT_H
#define JQHOST_SIMULATE_SOFT_PAINT_H

#include <opencv2/core.hpp>

namespace jqhost {

// Painting with soft edges on an 8-bit blue-green-red picture. Only + - * / and
// square roots of doubles are used, which are rounded the same way everywhere, so
// the picture does not depend on the drawing code of an image library. Whatever
// lies outside the picture is clipped.

struct Ellipse {
  double x = 0, y = 0;          ///< centre, pixels
  double major = 1, minor = 1;  ///< half axes, pixels
  double axisX = 1, axisY = 0;  ///< unit vector along the major half axis
  cv::Vec3b colour;             ///< blue, green, red
  int opacity = 256;            ///< of 256
  double softness = 1;          ///< width of the edge, pixels
};

void PaintEllipse(cv::Mat& picture, const Ellipse& ellipse);

/// A straight stroke with round ends from (x0, y0) to (x1, y1).
struct Stroke {
  double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
  double halfWidth = 1;
  cv::Vec3b colour;
  int opacity = 256;
};

void PaintStroke(cv::Mat& picture, const Stroke& stroke);

}  // namespace jqhost

#endif  // JQHOST_SIMULATE_SOFT_PAINT_H

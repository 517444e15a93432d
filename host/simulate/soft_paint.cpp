#include "host/simulate/soft_paint.h"

#include <algorithm>
#include <cmath>

namespace jqhost {
namespace {

struct Box {
  int left, top, right, bottom;  // exclusive at the right and bottom
};

Box ClippedBox(const cv::Mat& picture, double left, double top, double right, double bottom) {
  const auto clip = [](double value, int limit) {
    return static_cast<int>(std::min(std::max(value, 0.0), static_cast<double>(limit)));
  };
  return {clip(std::floor(left), picture.cols), clip(std::floor(top), picture.rows),
          clip(std::ceil(right) + 1, picture.cols), clip(std::ceil(bottom) + 1, picture.rows)};
}

// `cover` of 256 parts of the colour, the rest of what is there, rounded.
void Mix(cv::Vec3b& pixel, const cv::Vec3b& colour, int cover) {
  for (int k = 0; k < 3; ++k) {
    pixel[k] =
        static_cast<unsigned char>((pixel[k] * (256 - cover) + colour[k] * cover + 128) >> 8);
  }
}

// 1 inside, 0 outside, a ramp of `softness` pixels centred on the edge.
int Cover(double insideBy, double softness, int opacity) {
  const double ramp = insideBy / softness + 0.5;
  return static_cast<int>(std::min(std::max(ramp, 0.0), 1.0) * opacity);
}

}  // namespace

void PaintEllipse(cv::Mat& picture, const Ellipse& e) {
  const double reach = e.major + e.softness;
  const Box box = ClippedBox(picture, e.x - reach, e.y - reach, e.x + reach, e.y + reach);
  for (int r = box.top; r < box.bottom; ++r) {
    cv::Vec3b* row = picture.ptr<cv::Vec3b>(r);
    for (int c = box.left; c < box.right; ++c) {
      const double dx = c - e.x;
      const double dy = r - e.y;
      const double u = (dx * e.axisX + dy * e.axisY) / e.major;
      const double v = (dy * e.axisX - dx * e.axisY) / e.minor;
      // Distance to the edge, measured along the shorter axis: close enough for
      // an edge a pixel or two wide.
      const double insideBy = (1.0 - std::sqrt(u * u + v * v)) * e.minor;
      const int cover = Cover(insideBy, e.softness, e.opacity);
      if (cover > 0) Mix(row[c], e.colour, cover);
    }
  }
}

void PaintStroke(cv::Mat& picture, const Stroke& s) {
  const double reach = s.halfWidth + 1;
  const Box box = ClippedBox(picture, std::min(s.x0, s.x1) - reach, std::min(s.y0, s.y1) - reach,
                             std::max(s.x0, s.x1) + reach, std::max(s.y0, s.y1) + reach);
  const double ax = s.x1 - s.x0;
  const double ay = s.y1 - s.y0;
  const double length2 = std::max(ax * ax + ay * ay, 1e-9);
  for (int r = box.top; r < box.bottom; ++r) {
    cv::Vec3b* row = picture.ptr<cv::Vec3b>(r);
    for (int c = box.left; c < box.right; ++c) {
      const double px = c - s.x0;
      const double py = r - s.y0;
      const double along = std::min(std::max((px * ax + py * ay) / length2, 0.0), 1.0);
      const double ex = px - along * ax;
      const double ey = py - along * ay;
      const int cover = Cover(s.halfWidth - std::sqrt(ex * ex + ey * ey), 1.0, s.opacity);
      if (cover > 0) Mix(row[c], s.colour, cover);
    }
  }
}

}  // namespace jqhost

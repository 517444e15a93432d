#ifndef JQSCOPE_VIEW_REDUCE_PIXELS_H
#define JQSCOPE_VIEW_REDUCE_PIXELS_H

#include <QImage>
#include <opencv2/core.hpp>

namespace jqscope {

/// A `CV_8UC3` picture as the view draws it; pure black, which no frame leaves, is
/// transparent.
QImage ToTilePixels(const cv::Mat& picture);

/// Half the size, each pixel the mean of 2 x 2, rounded half up. Colours are
/// premultiplied, so that nothing of the empty ground mixes into the edges. Sides are even.
QImage HalvePixels(const QImage& pixels);

/// Copies `from` to `to` with its top-left corner at `at`; what lies outside is cut off.
void CopyPixels(const QImage& from, QPoint at, QImage& to);

}  // namespace jqscope

#endif  // JQSCOPE_VIEW_REDUCE_PIXELS_H

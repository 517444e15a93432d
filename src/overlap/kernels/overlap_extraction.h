#ifndef JQ_OVERLAP_KERNELS_OVERLAP_EXTRACTION_H
#define JQ_OVERLAP_KERNELS_OVERLAP_EXTRACTION_H

#include <opencv2/core.hpp>

namespace jqstitching {

/// Views of the two pieces that show the same scene.
struct Overlap {
  cv::Mat first, second;
};

/// Cuts the intersection of the rectangle of `second`'s size at `origin` of
/// `first` with the same rectangle moved by (dx, dy). Nothing is clipped: a range
/// outside an image raises the image library's range error.
Overlap CutOverlap(const cv::Point& origin, int dx, int dy, const cv::Mat& first,
                   const cv::Mat& second);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_KERNELS_OVERLAP_EXTRACTION_H

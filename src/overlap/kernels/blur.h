#ifndef JQ_OVERLAP_KERNELS_BLUR_H
#define JQ_OVERLAP_KERNELS_BLUR_H

#include <functional>
#include <opencv2/core.hpp>
#include <vector>

#include "picture/scratch.h"

namespace jqstitching {

/// 5-tap Gaussian of sigma 1 by `cv::filter2D`, vertical pass then horizontal
/// pass, each rounded to the image's own depth. Writes into the pixels of
/// `image`; in a view the filter sees the pixels around it.
void BlurInPlace(cv::Mat& image);

/// Working memory of the functions below.
struct BlurScratch {
  std::vector<float> rows;
  std::vector<unsigned char> blurred[2];
  ScratchPicture copies[2];
};

/// Blurs two grey pictures (`CV_8UC1`, seen as whole pictures even where they are
/// views) as `BlurInPlace` does, and hands over their blurred rows, top to bottom, as
/// many as `second` has; `first` has no fewer. The pictures keep their pixels.
void ForEachBlurredRow(
    const cv::Mat& first, const cv::Mat& second, BlurScratch& scratch,
    const std::function<void(const unsigned char* first, const unsigned char* second)>& visit);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_KERNELS_BLUR_H

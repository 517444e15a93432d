#ifndef JQ_OVERLAP_BLUR_H
#define JQ_OVERLAP_BLUR_H

#include <opencv2/core.hpp>

namespace jqstitching {

/// 5-tap Gaussian of sigma 1, vertical pass then horizontal pass, each rounded to
/// the image's own depth. Writes into the pixels of `image`.
void BlurInPlace(cv::Mat& image);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_BLUR_H

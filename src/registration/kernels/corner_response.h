#ifndef JQ_REGISTRATION_KERNELS_CORNER_RESPONSE_H
#define JQ_REGISTRATION_KERNELS_CORNER_RESPONSE_H

#include <functional>
#include <opencv2/core.hpp>
#include <vector>

#include "picture/scratch.h"

namespace jqstitching {

/// Responses nearer to the border than this are not computed.
constexpr int kCornerMargin = 20;

/// Row buffers of the response, kept from frame to frame.
struct ResponseScratch {
  std::vector<float> rows;
  ScratchPicture maps[3];
};

/// Receives the response rows from top to bottom: the row's number, its
/// responses by column (computed in the interior only) and their sum.
using ResponseVisitor = std::function<void(int row, const float* response, double sum)>;

/// Computes the Harris response (k = 0.007, gradient magnitudes, 9-tap Gaussian of
/// sigma 8, vertical pass then horizontal) of the interior of `image`, which is
/// read as one byte a pixel through its row step. `response` is a buffer of
/// cols + kRowPadding floats chosen by `target` for each row.
///
/// The smoothing rounds as `cv::filter2D` does on this machine: the rows are
/// smoothed while they are in cache where its rounding is known and the vector
/// level can follow it, and by `cv::filter2D` itself elsewhere.
void ForEachResponseRow(const cv::Mat& image, ResponseScratch& scratch,
                        const std::function<float*(int row)>& target, const ResponseVisitor& visit);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_KERNELS_CORNER_RESPONSE_H

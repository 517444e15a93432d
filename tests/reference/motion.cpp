#include <cstdint>
#include <cstdlib>
#include <opencv2/imgproc.hpp>

#include "reference/algorithm.h"

namespace reference {

int Algorithm::ImageMotionModel(cv::Mat first, cv::Mat second) {
  // A division by zero, and samples that are not there.
  if (second.rows == 0 || second.cols == 0 || first.rows < second.rows ||
      first.cols < second.cols) {
    CV_Error(cv::Error::StsUnmatchedSizes, "the second frame is empty or larger than the first");
  }
  if (first.channels() > 1) cv::cvtColor(first, first, cv::COLOR_RGB2GRAY);
  if (second.channels() > 1) cv::cvtColor(second, second, cv::COLOR_RGB2GRAY);
  const cv::Mat kernel = cv::getGaussianKernel(5, 1.0, CV_64F);
  const int border = 4;  // reflect-101
  // A one-channel frame is blurred in the caller's own pixels.
  cv::filter2D(first, first, first.depth(), kernel, cv::Point(-1, -1), 0, border);
  cv::filter2D(first, first, first.depth(), kernel.t(), cv::Point(-1, -1), 0, border);
  cv::filter2D(second, second, second.depth(), kernel, cv::Point(-1, -1), 0, border);
  cv::filter2D(second, second, second.depth(), kernel.t(), cv::Point(-1, -1), 0, border);

  std::int64_t sum = 0;
  for (int r = 0; r < second.rows; ++r) {
    for (int c = 0; c < second.cols; ++c) {
      sum += std::abs(int{first.ptr(r)[c]} - int{second.ptr(r)[c]});
    }
  }
  const std::int64_t area = std::int64_t{second.rows} * second.cols;
  return static_cast<int>(sum / area);
}

}  // namespace reference

#include <cstdlib>
#include <opencv2/imgproc.hpp>

#include "jqstitchingalgorithm.h"
#include "overlap/blur.h"

int JQStitchingAlgorithm::ImageMotionModel(cv::Mat first, cv::Mat second) {
  if (first.empty() || first.size() != second.size()) {
    CV_Error(cv::Error::StsUnmatchedSizes,
             cv::format("the motion measure needs two frames of one size, not %d x %d and %d x %d",
                        first.cols, first.rows, second.cols, second.rows));
  }
  if (first.channels() > 1) cv::cvtColor(first, first, cv::COLOR_RGB2GRAY);
  if (second.channels() > 1) cv::cvtColor(second, second, cv::COLOR_RGB2GRAY);
  // One-channel frames are not copied: their own pixels come back blurred.
  jqstitching::BlurInPlace(first);
  jqstitching::BlurInPlace(second);
  std::int64_t sum = 0;
  for (int r = 0; r < second.rows; ++r) {
    const unsigned char* a = first.ptr(r);
    const unsigned char* b = second.ptr(r);
    for (int c = 0; c < second.cols; ++c) sum += std::abs(a[c] - b[c]);
  }
  return static_cast<int>(sum / (std::int64_t{second.rows} * second.cols));
}

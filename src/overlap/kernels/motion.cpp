#include "overlap/kernels/motion.h"

#include "overlap/kernels/blur_rows.h"

namespace jqstitching {

void CheckMotionFrames(const cv::Mat& first, const cv::Mat& second) {
  if (!second.empty() && first.rows >= second.rows && first.cols >= second.cols) return;
  CV_Error(cv::Error::StsUnmatchedSizes,
           cv::format("the motion measure needs a frame that is not empty and a first one that is "
                      "no smaller, not %d x %d after %d x %d",
                      second.cols, second.rows, first.cols, first.rows));
}

int MotionDifference(const cv::Mat& first, const cv::Mat& second, QualityScratch& scratch) {
  std::vector<unsigned char>& terms = scratch.terms[0];
  terms.resize(static_cast<size_t>(second.cols) + kBlurPadding);
  std::uint64_t sum = 0;
  ForEachBlurredRow(first, second, scratch.blur,
                    [&](const unsigned char* a, const unsigned char* b) {
                      sum += DifferenceRow(a, b, second.cols, terms.data());
                    });
  return static_cast<int>(sum / second.total());
}

}  // namespace jqstitching

#include "overlap/motion.h"

#include <cstdlib>
#include <opencv2/imgproc.hpp>

#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"
#include "overlap/blur_rows.h"

namespace jqstitching {

void CheckMotionFrames(const cv::Mat& first, const cv::Mat& second) {
  if (!first.empty() && first.size() == second.size()) return;
  CV_Error(cv::Error::StsUnmatchedSizes,
           cv::format("the motion measure needs two frames of one size, not %d x %d and %d x %d",
                      first.cols, first.rows, second.cols, second.rows));
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

int JQStitchingAlgorithm::ImageMotionModel(cv::Mat first, cv::Mat second) {
  using namespace jqstitching;
  CheckMotionFrames(first, second);
  if (first.type() == CV_8UC3 && second.type() == CV_8UC3) {
    Workspace& workspace = m_workspace.get();
    const cv::Mat grey = ToGrey(first, workspace.previous);
    return MotionDifference(grey, workspace.current.makeGrey(second).grey, workspace.quality);
  }
  if (first.channels() > 1) cv::cvtColor(first, first, cv::COLOR_RGB2GRAY);
  if (second.channels() > 1) cv::cvtColor(second, second, cv::COLOR_RGB2GRAY);
  // One-channel frames are not copied: their own pixels come back blurred.
  BlurInPlace(first);
  BlurInPlace(second);
  std::int64_t sum = 0;
  for (int r = 0; r < second.rows; ++r) {
    const unsigned char* a = first.ptr(r);
    const unsigned char* b = second.ptr(r);
    for (int c = 0; c < second.cols; ++c) sum += std::abs(a[c] - b[c]);
  }
  return static_cast<int>(sum / static_cast<std::int64_t>(second.total()));
}

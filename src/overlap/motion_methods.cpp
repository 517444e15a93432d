#include <cstdlib>
#include <opencv2/imgproc.hpp>

#include "engine/picture_check.h"
#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"
#include "overlap/kernels/blur.h"
#include "overlap/kernels/motion.h"

int JQStitchingAlgorithm::ImageMotionModel(cv::Mat first, cv::Mat second) {
  using namespace jqstitching;
  CheckPictures(first, second);
  CheckMotionFrames(first, second);
  if (first.type() == CV_8UC3 && second.type() == CV_8UC3) {
    Workspace& workspace = m_workspace.get();
    const cv::Mat grey = ToGrey(first, workspace.previous);
    return MotionDifference(grey, workspace.current.make(second, false).grey, workspace.quality);
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

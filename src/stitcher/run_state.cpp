#include "stitcher/run_state.h"

void JQImageStitching::RunState::recycle(cv::Mat& picture) {
  cv::Mat given;
  std::swap(given, picture);
  // One header, and the matrix that owns its memory: nobody else can see it change.
  const bool own = given.u != nullptr && given.u->refcount == 1;
  if (!own) return;
  for (cv::Mat& spare : m_spares) {
    if (spare.size() != given.size() || spare.type() != given.type()) {
      spare = given;
      return;
    }
  }
}

cv::Mat JQImageStitching::RunState::takeSpare() {
  for (cv::Mat& spare : m_spares) {
    if (spare.empty()) continue;
    cv::Mat taken;
    std::swap(taken, spare);
    return taken;
  }
  return cv::Mat();
}

void JQImageStitching::RunState::exposeCurrentFrame(JQImageStitching& stitcher) {
  if (stitcher.m_curFrame.data == stitcher.m_refFrame.data) {
    stitcher.m_pRun->referenceId = 0;
  }
}

#include <algorithm>

#include "stitcher/run_state.h"

namespace {

bool HoldsEmptyPixel(const cv::Mat& picture) {
  const size_t pixel = picture.elemSize();
  for (int r = 0; r < picture.rows; ++r) {
    const unsigned char* p = picture.ptr(r);
    for (int c = 0; c < picture.cols; ++c, p += pixel) {
      if (std::all_of(p, p + pixel, [](unsigned char sample) { return sample == 0; })) return true;
    }
  }
  return false;
}

}  // namespace

bool JQImageStitching::ContinueAt(const cv::Point& topLeft) {
  if (m_pOutImage == nullptr || m_nFrameCount == 0) return false;
  const cv::Size frame(m_pAlgorithm->m_nImageCols, m_pAlgorithm->m_nImageRows);
  if (topLeft.x < 0 || topLeft.y < 0 || topLeft.x > m_mosaic.cols - frame.width ||
      topLeft.y > m_mosaic.rows - frame.height) {
    return false;
  }
  const cv::Mat there = m_mosaic(cv::Rect(topLeft, frame));
  if (HoldsEmptyPixel(there)) return false;

  jqstitching::UndoHistory::Steps step = RunState::prepareUndo(*this);
  cv::Mat block = jqstitching::FramePool::Instance().newMatrix();
  there.copyTo(block);
  // Nothing fails from here on.
  m_refFrame = block;
  m_curFrame = block;
  stitchflags& flags = m_pAlgorithm->m_stitchFlags;
  flags.positionX = topLeft.x;
  flags.positionY = topLeft.y;
  flags.offsetX = 0;
  flags.offsetY = 0;
  RunState::newReference(*this);
  m_pRun->undo.add(std::move(step));
  RunState::showRun(*this);
  return true;
}

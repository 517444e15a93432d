#include <algorithm>

#include "stitcher/run_state.h"

namespace {

// The mosaic as it was before it grew: without the rows and columns that came on. A
// mosaic of its own, whose rows lie side by side as everywhere.
cv::Mat WithoutGrowth(const cv::Mat& mosaic, const JQStitchingUndoStep& step) {
  if (mosaic.size() == step.mosaicSize) return mosaic;
  if (step.mosaicSize.empty()) return cv::Mat();
  return mosaic(cv::Rect(step.moved, step.mosaicSize)).clone();
}

}  // namespace

jqstitching::UndoHistory::Steps JQImageStitching::RunState::prepareUndo(
    const JQImageStitching& stitcher) {
  jqstitching::UndoHistory::Steps steps = stitcher.m_pRun->undo.prepare();
  for (JQStitchingUndoStep& step : steps) {
    step.before = momentOf(stitcher);
    step.mosaicSize = stitcher.m_mosaic.size();
  }
  return steps;
}

void JQImageStitching::SetUndoDepth(int frames) {
  m_pRun->undo.setDepth(static_cast<size_t>(std::max(frames, 0)));
}

int JQImageStitching::GetUndoCount() const {
  return static_cast<int>(m_pRun->undo.steps().size());
}

bool JQImageStitching::UndoLastFrame() {
  jqstitching::UndoHistory& undo = m_pRun->undo;
  if (undo.steps().empty()) return false;
  JQStitchingUndoStep& step = undo.newest();
  // Nothing fails after the mosaic's memory is there.
  cv::Mat mosaic = WithoutGrowth(m_mosaic, step);
  if (!step.covered.empty()) step.block.copyTo(mosaic(step.covered));
  m_mosaic = mosaic;
  RunState::returnTo(*this, step.before);
  undo.dropNewest();
  RunState::showRun(*this);
  return true;
}

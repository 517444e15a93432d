#include <algorithm>

#include "blend/kernels/borders.h"
#include "stitcher/run_state.h"

namespace {

// The rows and columns that came on when the mosaic grew from its size before.
jqstitching::Borders GrownBy(const JQStitchingUndoStep& step, cv::Size mosaic) {
  jqstitching::Borders borders;
  borders.left = step.moved.x;
  borders.top = step.moved.y;
  borders.right = mosaic.width - step.mosaicSize.width - borders.left;
  borders.bottom = mosaic.height - step.mosaicSize.height - borders.top;
  return borders;
}

}  // namespace

jqstitching::UndoHistory::Steps JQImageStitching::RunState::prepareUndo(
    const JQImageStitching& stitcher) {
  // The next frame replaces the mosaic that a batch run has left to a live run.
  if (stitcher.m_nFrameCount == 0 && !stitcher.m_mosaic.empty()) return {};
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
  if (step.mosaicSize.empty()) {
    m_mosaic = cv::Mat();
  } else {
    jqstitching::RemoveBorders(m_mosaic, GrownBy(step, m_mosaic.size()), 1);
  }
  // Nothing fails from here on.
  if (!step.covered.empty()) step.block.copyTo(m_mosaic(step.covered));
  RunState::returnTo(*this, step.before);
  undo.dropNewest();
  RunState::showRun(*this);
  return true;
}

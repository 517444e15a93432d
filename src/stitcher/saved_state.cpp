#include <memory>

#include "jqglobalclass.h"
#include "picture/growable_pixels.h"
#include "picture/library_rounding.h"
#include "stitcher/run_state.h"
#include "stitcher/state_check.h"

namespace {

bool ShareAll(const cv::Mat& a, const cv::Mat& b) {
  return !a.empty() && a.data == b.data && a.size() == b.size() && a.type() == b.type();
}

JQStitchingMoment DeepCopy(JQStitchingMoment moment) {
  const bool shared = ShareAll(moment.current, moment.reference);
  moment.reference = moment.reference.clone();
  moment.current = shared ? moment.reference : moment.current.clone();
  return moment;
}

JQStitchingUndoStep DeepCopy(JQStitchingUndoStep step) {
  step.before = DeepCopy(step.before);
  step.block = step.block.clone();
  return step;
}

}  // namespace

JQStitchingState JQImageStitching::SaveState() const {
  JQStitchingState state;
  state.undoDepth = static_cast<std::int32_t>(m_pRun->undo.depth());
  state.memoryLimit = m_pRun->memoryLimit;
  if (m_pOutImage == nullptr) return state;
  const JQStitchingAlgorithm& engine = *m_pAlgorithm;
  state.started = true;
  state.overlapMode = engine.m_nOverlapMode;
  state.detectLevel = engine.m_nDetectLevel;
  state.cornerBudget = engine.m_nCornerBudget;
  if (!m_mosaic.empty()) state.frameSize = cv::Size(engine.m_nImageCols, engine.m_nImageRows);
  state.mosaic = m_mosaic.clone();
  state.now = DeepCopy(RunState::momentOf(*this));
  for (const JQStitchingUndoStep& step : m_pRun->undo.steps()) {
    state.undo.push_back(DeepCopy(step));
  }
  return state;
}

void JQImageStitching::RestoreState(const JQStitchingState& state) {
  jqstitching::CheckState(state);
  // Whatever can fail comes first.
  cv::Mat mosaic;
  if (!state.mosaic.empty()) {
    // Grows without a copy, like a mosaic that was started here.
    mosaic = jqstitching::GrowableZeros(state.mosaic.rows, state.mosaic.cols, state.mosaic.type());
    state.mosaic.copyTo(mosaic);
  }
  const JQStitchingMoment now = DeepCopy(state.now);
  jqstitching::UndoHistory undo;
  undo.setDepth(static_cast<size_t>(state.undoDepth));
  for (const JQStitchingUndoStep& step : state.undo) undo.add({DeepCopy(step)});
  jqstitching::PrepareRounding();
  std::unique_ptr<_tagJQIMG>& spare = m_pRun->spareRecord;
  if (state.started && m_pOutImage == nullptr && !spare) spare = std::make_unique<_tagJQIMG>();

  RunState::setLive(*this, state.overlapMode, state.detectLevel, state.cornerBudget);
  RunState::startRun(*this);
  m_mosaic = std::move(mosaic);
  RunState::returnTo(*this, now);
  m_pRun->undo = std::move(undo);
  m_pRun->memoryLimit = state.memoryLimit;
  if (!state.frameSize.empty()) {
    m_pAlgorithm->m_nImageCols = state.frameSize.width;
    m_pAlgorithm->m_nImageRows = state.frameSize.height;
  }
  if (state.started) {
    if (m_pOutImage == nullptr) m_pOutImage = spare.release();
    RunState::showRun(*this);
  } else if (m_pOutImage != nullptr) {
    // The host may still hold the record: the next first frame fills it again.
    *m_pOutImage = _tagJQIMG();
    spare.reset(m_pOutImage);
    m_pOutImage = nullptr;
  }
}

void JQImageStitching::SetMemoryLimit(std::int64_t bytes) {
  m_pRun->memoryLimit = bytes;
}

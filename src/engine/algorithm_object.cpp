#include "engine/picture_check.h"
#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"
#include "registration/kernels/zero_samples.h"

namespace jqstitching {

WorkspaceHandle::WorkspaceHandle() noexcept = default;
WorkspaceHandle::WorkspaceHandle(const WorkspaceHandle&) noexcept {}
WorkspaceHandle& WorkspaceHandle::operator=(const WorkspaceHandle&) noexcept {
  return *this;
}
WorkspaceHandle::~WorkspaceHandle() = default;

Workspace& WorkspaceHandle::get() {
  if (!m_workspace) m_workspace = std::make_unique<Workspace>();
  return *m_workspace;
}

}  // namespace jqstitching

// The three active thresholds stay unset: the offset driver arms them before the
// overlap test reads them.
JQStitchingAlgorithm::JQStitchingAlgorithm()
    : m_nDetectLevel(1),
      m_nDownScale(1),
      m_nCornerBudget(8),
      m_nImageCols(5000),
      m_nImageRows(5000),
      m_nBoundCols(20000),
      m_nBoundRows(20000),
      m_nFlagPreset(5),
      m_fBrightPreset(40.0f),
      m_fDefinitionPreset(15.0f),
      m_nOverlapMode(0),
      m_nUsePresets(1) {}

void JQStitchingAlgorithm::SetParameter(int nDetectLevel, int nCornerBudget, int nOverlapMode,
                                        int nUsePresets) {
  m_nDetectLevel = nDetectLevel;
  m_nCornerBudget = nCornerBudget;
  m_nOverlapMode = nOverlapMode;
  m_nUsePresets = nUsePresets;
  // Levels of 0 and below give 1 here and 2 in the corner search: both rules hold.
  m_nDownScale = (nDetectLevel == 1 || nDetectLevel == 2) ? 2 : 1;
}

void JQStitchingAlgorithm::JudgeImageChannel(cv::Mat source, cv::Mat& destination) {
  jqstitching::CheckPicture(source);
  jqstitching::LiftZeroSamples(source);
  destination = source;
}

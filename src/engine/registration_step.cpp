#include "engine/registration_step.h"

namespace jqstitching {

bool CanRegisterShared(const cv::Mat& first, const cv::Mat& second) {
  return IsPlainPicture(first) && first.type() == second.type() && !first.empty() &&
         !second.empty();
}

void RegisterShared(JQStitchingAlgorithm& engine, Workspace& workspace, const cv::Mat& first,
                    std::uint64_t firstId, const GreyAndHalf& current, int& offsetX, int& offsetY,
                    int& supportCount) {
  const CornerSettings settings{engine.m_nDetectLevel, engine.m_nCornerBudget};
  engine.m_nDownScale = settings.halved() ? 2 : 1;
  workspace.reference.update(first, firstId, settings, workspace.corners);
  const Features features = FindFeatures(current, settings, workspace.corners);
  const std::optional<Shift> shift = MeasureShift(workspace.reference.features(), features);
  if (!shift) return;
  offsetX = shift->x;
  offsetY = shift->y;
  supportCount = shift->support;
}

}  // namespace jqstitching

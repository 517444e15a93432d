#include "registration/registration_step.h"

#include "engine/engine_access.h"

namespace jqstitching {

bool CanRegisterShared(const cv::Mat& first, const cv::Mat& second) {
  return IsPlainPicture(first) && first.type() == second.type() && !first.empty() &&
         !second.empty();
}

namespace {

CornerSettings Settings(const JQStitchingAlgorithm& engine) {
  return {engine.m_nDetectLevel, engine.m_nCornerBudget};
}

}  // namespace

void PrepareReference(JQStitchingAlgorithm& engine, const cv::Mat& reference, std::uint64_t id) {
  if (!CanRegisterShared(reference, reference)) return;
  Workspace& workspace = EngineAccess::workspace(engine);
  workspace.reference.update(reference, id, Settings(engine), workspace.corners);
}

CornersFound RegisterShared(JQStitchingAlgorithm& engine, Workspace& workspace,
                            const cv::Mat& first, std::uint64_t firstId, const GreyAndHalf& current,
                            int& offsetX, int& offsetY, int& supportCount) {
  const CornerSettings settings = Settings(engine);
  engine.m_nDownScale = CornerScale(settings.detectLevel);
  workspace.reference.update(first, firstId, settings, workspace.corners);
  const Features& reference = workspace.reference.features();
  const Features features = FindFeatures(current, settings, workspace.corners);
  CornersFound found{!reference.corners.empty(), !features.corners.empty()};
  const std::optional<Shift> shift = MeasureShift(reference, features);
  if (!shift) return found;
  found.matched = shift->pairs;
  offsetX = shift->x;
  offsetY = shift->y;
  supportCount = shift->support;
  return found;
}

}  // namespace jqstitching

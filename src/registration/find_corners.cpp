#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"
#include "picture/grey.h"
#include "registration/corners.h"

namespace jqstitching {

std::int32_t CornerLimit(std::int32_t detectLevel, std::int32_t cornerBudget) {
  const std::uint32_t product = (static_cast<std::uint32_t>(cornerBudget) + 8u) *
                                (580u - 80u * static_cast<std::uint32_t>(detectLevel));
  return static_cast<std::int32_t>(product) / 16;
}

CornerList FindCorners(const cv::Mat& image, std::int32_t detectLevel, std::int32_t cornerBudget,
                       CornerScratch& scratch) {
  CornerList corners;
  FindCandidates(image, MeanSum::kBounded, scratch);
  std::vector<Candidate>& candidates = scratch.candidates;
  const std::int32_t limit = CornerLimit(detectLevel, cornerBudget);
  const size_t wanted = std::min(candidates.size(), static_cast<size_t>(limit));
  PreselectStrongest(candidates, limit);
  corners.unordered = candidates.size() < wanted;
  if (corners.unordered) {
    for (const Candidate& c : candidates) corners.positions.push_back(c.position);
    return corners;
  }
  corners.positions.reserve(wanted);
  for (const int index : LargestRadii(SuppressionRadii(candidates), wanted)) {
    corners.positions.push_back(candidates[static_cast<size_t>(index)].position);
  }
  return corners;
}

}  // namespace jqstitching

void JQStitchingAlgorithm::FindHarrisCornerCoordianteFun(cv::Mat image,
                                                         std::vector<cv::Point>& corners) {
  using namespace jqstitching;
  Workspace& workspace = m_workspace.get();
  m_nDownScale = m_nDetectLevel < 3 ? 2 : 1;
  if (m_nDetectLevel <= 2) {
    if (image.type() == CV_8UC1) {
      image = Halve(image, workspace.half);
    } else {
      const cv::Size half(image.cols / 2, image.rows / 2);
      cv::resize(image, image, half, 1.0, 0.0, cv::INTER_LINEAR);
    }
  }
  CornerList found = FindCorners(image, m_nDetectLevel, m_nCornerBudget, workspace.corners);
  if (found.positions.empty()) return;
  if (found.unordered) {
    corners = std::move(found.positions);
    return;
  }
  corners.reserve(corners.size() + found.positions.size());
  for (size_t k = 0; k < found.positions.size(); ++k) {
    corners.push_back(found.positions[k]);
    // Element k, not the one just appended: the same for the empty list that
    // callers pass.
    if (m_nDownScale != 1) corners[k] *= m_nDownScale;
  }
}

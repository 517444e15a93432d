#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "jqstitchingalgorithm.h"
#include "registration/corners.h"

void JQStitchingAlgorithm::FindHarrisCornerCoordianteFun(cv::Mat image,
                                                         std::vector<cv::Point>& corners) {
  using namespace jqstitching;
  m_nDownScale = m_nDetectLevel < 3 ? 2 : 1;
  if (m_nDetectLevel <= 2) {
    cv::resize(image, image, cv::Size(image.cols / 2, image.rows / 2), 1.0, 0.0, cv::INTER_LINEAR);
  }
  std::vector<Candidate> candidates = FindCandidates(image);
  const std::int32_t limit = CornerLimit(m_nDetectLevel, m_nCornerBudget);
  const size_t wanted = std::min(candidates.size(), static_cast<size_t>(limit));
  PreselectStrongest(candidates, limit);
  if (candidates.empty()) return;
  if (candidates.size() < wanted) {
    // A limit so large that seven times it wraps to less: all are returned, unscaled.
    std::vector<cv::Point> all;
    for (const Candidate& c : candidates) all.push_back(c.position);
    corners = std::move(all);
    return;
  }
  const std::vector<int> order = OrderByRadius(SuppressionRadii(candidates));
  corners.reserve(corners.size() + wanted);
  for (size_t k = 0; k < wanted; ++k) {
    corners.push_back(candidates[order[k]].position);
    // Element k, not the one just appended: the same for the empty list that
    // callers pass.
    if (m_nDownScale != 1) corners[k] *= m_nDownScale;
  }
}

#include <algorithm>

#include "registration/kernels/corners.h"

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

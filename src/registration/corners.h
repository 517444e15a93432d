#ifndef JQ_REGISTRATION_CORNERS_H
#define JQ_REGISTRATION_CORNERS_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace jqstitching {

/// A local maximum of the corner response, detection-image pixels.
struct Candidate {
  float response;
  cv::Point position;
};

/// Number of corners kept: (budget + 8) * (580 - 80 * level) / 16 in wrapping
/// 32-bit integers, truncated. Compared as an unsigned size: a negative number
/// sets no limit.
std::int32_t CornerLimit(std::int32_t detectLevel, std::int32_t cornerBudget);

/// Local maxima of the Harris response above its mean, in raster order. `image`
/// is read as one byte a pixel through its row step.
std::vector<Candidate> FindCandidates(const cv::Mat& image);

/// Keeps the 7 * limit strongest candidates, strongest first and equal ones in
/// list order; a shorter list stays as it is.
void PreselectStrongest(std::vector<Candidate>& candidates, std::int32_t limit);

/// Squared distance of each candidate to the nearest one that is more than twice
/// as strong, capped at 65535.
std::vector<float> SuppressionRadii(const std::vector<Candidate>& candidates);

/// List indices by decreasing radius; equal radii keep list order.
std::vector<int> OrderByRadius(const std::vector<float>& radii);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_CORNERS_H

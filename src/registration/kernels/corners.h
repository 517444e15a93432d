#ifndef JQ_REGISTRATION_KERNELS_CORNERS_H
#define JQ_REGISTRATION_KERNELS_CORNERS_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

#include "registration/kernels/corner_response.h"

namespace jqstitching {

/// Divisor of the picture in which corners are searched: they are searched in the
/// halved picture below level 3.
inline std::int32_t CornerScale(std::int32_t detectLevel) {
  return detectLevel < 3 ? 2 : 1;
}

/// A local maximum of the corner response, detection-image pixels.
struct Candidate {
  float response;
  cv::Point position;
};

/// Working memory of the corner search, kept from frame to frame.
struct CornerScratch {
  ResponseScratch response;
  std::vector<float> ring;
  std::vector<int> columns;
  std::vector<Candidate> candidates;
};

/// How the mean response is summed. The stated order is raster order, in double;
/// a sum in another order differs by less than a known bound, so it decides for
/// every candidate outside that bound, and the stated order is taken when one
/// lies within. Both give the same candidates.
enum class MeanSum { kBounded, kInOrder };

/// Local maxima of the response above its mean (sum over the interior divided by
/// the whole area), in raster order, in `scratch.candidates`. An equal neighbour
/// does not disqualify.
void FindCandidates(const cv::Mat& image, MeanSum how, CornerScratch& scratch);

/// Number of corners kept: (budget + 8) * (580 - 80 * level) / 16 in wrapping
/// 32-bit integers, truncated. Compared as an unsigned size: a negative number
/// sets no limit.
std::int32_t CornerLimit(std::int32_t detectLevel, std::int32_t cornerBudget);

/// Keeps the 7 * limit strongest candidates, strongest first and equal ones in
/// list order; a shorter list stays as it is.
void PreselectStrongest(std::vector<Candidate>& candidates, std::int32_t limit);

/// Squared distance of each candidate to the nearest one that is more than twice
/// as strong, capped at 65535.
std::vector<float> SuppressionRadii(const std::vector<Candidate>& candidates);

/// The first `count` list indices by decreasing radius; equal radii keep list
/// order.
std::vector<int> LargestRadii(const std::vector<float>& radii, size_t count);

/// The corners of a detection image.
struct CornerList {
  std::vector<cv::Point> positions;  ///< by decreasing radius, detection-image pixels
  /// A limit so large that seven times it wraps to less than it: `positions` is
  /// the whole list in its own order and is not scaled.
  bool unordered = false;
};

CornerList FindCorners(const cv::Mat& image, std::int32_t detectLevel, std::int32_t cornerBudget,
                       CornerScratch& scratch);

}  // namespace jqstitching

#endif  // JQ_REGISTRATION_KERNELS_CORNERS_H

#ifndef JQHOST_ASSEMBLE_PLACE_FRAMES_H
#define JQHOST_ASSEMBLE_PLACE_FRAMES_H

#include <vector>

#include "host/assemble/link.h"

namespace jqhost {

/// Where frames lie, island by island.
struct Places {
  /// Of each frame, the number of the frames that hold together with it by used links, from
  /// 0 in the order of their first frames.
  std::vector<std::size_t> island;
  std::vector<cv::Point2d> place;  ///< of each frame; the first one of an island lies at (0, 0)
  std::size_t islands = 0;

  /// The way from one frame to another of its island.
  cv::Point2d Way(std::size_t from, std::size_t to) const { return place[to] - place[from]; }
  /// Distance between what a link says and where its frames lie, which is in one island.
  double Residual(const Link& link) const;
};

/// Places the frames by robust weighted least squares over the used links.
///
/// A link of n matches is taken to be good to s = sqrt(0.3^2 + 2^2 / n) pixels (the first
/// term for what lenses do, the second for the corners' places, 2 pixels each) and weighs
/// confidence / s^2, a confidence below 0.1 counting as 0.1. Ten times over, each link's
/// weight is divided by 1 + (residual / 2)^2 (Cauchy), so that a wrong one does not pull the
/// others along. The sums of squares are minimised by a sparse Cholesky (LDL') decomposition,
/// columns and rows apart.
Places PlaceFrames(std::size_t frames, const std::vector<Link>& links);

/// Throws out used links of more than `kAgreement` pixels residual, the largest first, with
/// the frames placed anew after each. These break loops of five and more.
/// @return where the frames lie then
Places PlaceConsistently(std::size_t frames, std::vector<Link>& links);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_PLACE_FRAMES_H

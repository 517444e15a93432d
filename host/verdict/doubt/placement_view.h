#ifndef JQHOST_VERDICT_DOUBT_PLACEMENT_VIEW_H
#define JQHOST_VERDICT_DOUBT_PLACEMENT_VIEW_H

#include <opencv2/core.hpp>

namespace jqhost {

/// A frame made small and grey: each block of `factor` x `factor` samples becomes its mean
/// (a rest at the right and at the bottom is left off), then the colour grey. Small enough to be
/// kept for every frame of a batch.
struct ReducedFrame {
  int factor = 0;  ///< frame pixels per sample
  cv::Mat grey;    ///< `CV_8UC1`; empty where there is no frame
};

/// A frame as the comparison of placements needs it: reduced, without the light's slow
/// changes, and already transformed. Made once for each placed frame, used for its own
/// placement and for that of the next.
///
/// The mean of the 27 x 27 samples around is taken off. 27 is wide beside the detail that
/// tells places apart and narrow beside vignetting and shading, which would correlate at
/// any shift.
struct PlacementView {
  int factor = 0;     ///< frame pixels per sample
  cv::Mat samples;    ///< `CV_32FC1`
  cv::Mat sums;       ///< integrals of the samples and of their squares, `CV_64FC1`,
  cv::Mat squares;    ///< one row and one column larger
  cv::Mat spectrum;   ///< of the samples padded with zeros, packed as `cv::dft` does it
  double energy = 0;  ///< mean square of the samples

  bool Empty() const { return samples.empty(); }
};

/// The factor for frames of this size: at least 4, so that noise is averaged and a small
/// frame costs little, and the longer side becomes at most 192 samples, so that the cost
/// does not grow with the frame.
int ViewFactor(cv::Size frame);

/// @param frame 8-bit, 1, 3 or 4 channels
ReducedFrame ReduceFrame(const cv::Mat& frame);

/// A frame with fewer than 16 samples a side gives an empty view.
PlacementView MakePlacementView(const ReducedFrame& frame);

}  // namespace jqhost

#endif  // JQHOST_VERDICT_DOUBT_PLACEMENT_VIEW_H

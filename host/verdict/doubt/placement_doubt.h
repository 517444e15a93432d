#ifndef JQHOST_VERDICT_DOUBT_PLACEMENT_DOUBT_H
#define JQHOST_VERDICT_DOUBT_PLACEMENT_DOUBT_H

#include <opencv2/core.hpp>

#include "host/verdict/doubt/placement_view.h"

namespace jqhost {

/// Why a placement is doubtful.
enum class DoubtReason {
  kNone,
  kContradicted,  ///< another shift agrees better
  kRepeats,       ///< another shift agrees about as well
  kUnsupported,   ///< no more agrees, of the pixels or of the matches, than chance would have it
};

/// The reason as reports and events spell it; empty for `kNone`.
const char* DoubtReasonName(DoubtReason reason);

/// How far a placement can be trusted. The stitcher's decision is not touched by it.
struct PlacementDoubt {
  double confidence = 1.0;  ///< 0 to 1; doubtful below 0.5
  bool doubtful = false;
  DoubtReason reason = DoubtReason::kNone;
  double agreement = 0.0;  ///< correlation at the measured shift, -1 to 1
  double rival = 0.0;      ///< that of the best rival; 0 when there is none within 0.4
  cv::Point rivalShift;    ///< frame pixels
  /// Of a scene that repeats: from the measured shift to the nearest one that agrees
  /// about as well, frame pixels; (0, 0) when the frame could slide there without a
  /// loss on the way, so that there is no period to tell. Of sharp structures it can be a
  /// multiple of the true period, when that falls between two samples of the views.
  cv::Point2d period;
};

/// Compares a placed frame with the one that it was placed against, over all shifts.
///
/// - The agreement is the largest correlation within 4 frame pixels of the measured shift
///   (at least 1 sample): the measurement is that good, and the views are coarser.
/// - Chance: correlations spread as scale / sqrt(common area), and the scale of these two
///   views is taken from the median magnitude over all shifts. Fisher's transform of a
///   correlation in such units is its significance. From 5 on it is significant: among the
///   ten to a hundred thousand shifts compared, chance alone reaches 4 to 4.5.
/// - A rival is a local maximum (of the 5 x 5 shifts around it; of equal ones the first in
///   raster order) more than 8 frame pixels (at least 2 samples) away along an axis. Against
///   a significant agreement it must be significant too; otherwise any rival counts, since
///   chance explains the agreement as well. The best one counts; of equal ones the first.
/// - The lead is the agreement less the rival; without a rival within 0.4 it is 0.4. Where
///   the agreement is not significant it is not more than the agreement itself.
/// - Where fewer than a tenth of the matched pairs agree, the lead counts in proportion: at
///   a share of 0.05 half of it. Nine of ten wrong placements of the development and the
///   evaluation scenes have a share below 0.07, nine of ten right ones have 0.1 and more.
/// - A trusted placement leads by 0.08. On the development scenes of `bench/host`, wrong
///   placements led by no more than 0 and right ones on scenes that do not repeat by 0.10
///   and more. Confidence grows with the lead: 0 at none, 0.5 at 0.08, 1 at 0.4.
/// - Doubt: contradicted where a significant rival leads by 0.08 or more; else unsupported
///   where the agreement is not significant or only the share of the matches took the lead
///   below 0.08; else repeats.
///
/// The number of agreeing matches does not enter: right placements were seen with 11 and
/// wrong ones with 189.
///
/// Frames too small to compare (an empty view), of different sizes, or placed with less
/// common area than is compared, are unsupported with confidence 0.
///
/// @param shift column and row of `before` at which pixel (0, 0) of `current` was placed
/// @param agreeingShare of the matched pairs, those that agree with the shift; 1 where it
///        is not known
PlacementDoubt JudgePlacement(const PlacementView& before, const PlacementView& current,
                              cv::Point shift, double agreeingShare = 1.0);

}  // namespace jqhost

#endif  // JQHOST_VERDICT_DOUBT_PLACEMENT_DOUBT_H

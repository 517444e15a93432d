#ifndef JQHOST_VERDICT_DOUBT_SHIFT_CORRELATION_H
#define JQHOST_VERDICT_DOUBT_SHIFT_CORRELATION_H

#include <opencv2/core.hpp>

#include "host/verdict/doubt/placement_view.h"

namespace jqhost {

/// How much two views agree at every shift.
///
/// At shift (x, y) sample (c, r) of the new view lies on sample (c + x, r + y) of the view
/// before. The correlation is the normalised one of the two common areas alone: means and
/// variances are theirs.
///
///   r = (S ab - S a S b / n) / sqrt((S aa - S a S a / n) (S bb - S b S b / n))
///
/// S ab comes from the product of the spectra, in single precision; the other sums come
/// from the integrals, in double precision.
struct ShiftCorrelation {
  cv::Mat values;    ///< `CV_32FC1`; row y + centre.y, column x + centre.x
  cv::Point centre;  ///< of shift (0, 0)
  cv::Size view;     ///< size of the two views

  /// Marks shifts that are not compared. The common area is below 6 % of the view or below
  /// 8 samples a side: with less, chance reaches any correlation. Or it is nearly flat in
  /// one of the views: its variance is below 1 % of the whole view's, or not above rounding.
  static constexpr float kNone = -2.0f;

  float At(cv::Point shift) const;
  /// Samples that the views have in common.
  int Area(cv::Point shift) const;
};

/// Both views have one size and one factor.
ShiftCorrelation CorrelateShifts(const PlacementView& before, const PlacementView& current);

}  // namespace jqhost

#endif  // JQHOST_VERDICT_DOUBT_SHIFT_CORRELATION_H

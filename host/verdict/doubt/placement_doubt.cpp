#include "host/verdict/doubt/placement_doubt.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "host/verdict/doubt/shift_correlation.h"

namespace jqhost {
namespace {

constexpr int kTolerance = 4;      // frame pixels
constexpr int kNeighbourhood = 8;  // frame pixels
constexpr double kSignificant = 5.0;
constexpr double kTrustedLead = 0.08;
constexpr double kTrustedShare = 0.1;
// From here on more of it does not mean more confidence.
constexpr double kFullLead = 0.4;
// A period ends at a peak of its own: the way there loses at least this much.
constexpr double kDip = 0.1;

int Distance(cv::Point a, cv::Point b) {
  return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y));
}

// What chance makes of these two views: correlation times root of area, one deviation.
double ChanceScale(const ShiftCorrelation& map) {
  constexpr int kStride = 29;  // no divisor of common widths, so that all columns are met
  std::vector<double> magnitudes;
  // Neighbours say the same; a part of the shifts is plenty.
  const int cells = static_cast<int>(map.values.total());
  magnitudes.reserve(static_cast<std::size_t>(cells) / kStride + 1);
  for (int i = 0; i < cells; i += kStride) {
    const cv::Point shift = cv::Point(i % map.values.cols, i / map.values.cols) - map.centre;
    const float value = map.At(shift);
    if (value == ShiftCorrelation::kNone) continue;
    magnitudes.push_back(std::abs(value) * std::sqrt(static_cast<double>(map.Area(shift))));
  }
  if (magnitudes.empty()) return 1.0;
  const auto middle = magnitudes.begin() + static_cast<std::ptrdiff_t>(magnitudes.size() / 2);
  std::nth_element(magnitudes.begin(), middle, magnitudes.end());
  // 0.6745 is the median magnitude of a normal variable, in deviations. Independent samples
  // would give 1, and neighbouring samples of a picture are never more than that.
  return std::max(1.0, *middle / 0.6745);
}

double Significance(const ShiftCorrelation& map, cv::Point shift, double scale) {
  const double value = std::min(static_cast<double>(map.At(shift)), 0.9999);
  return std::atanh(value) * std::sqrt(static_cast<double>(map.Area(shift))) / scale;
}

cv::Point BestNear(const ShiftCorrelation& map, cv::Point shift, int reach) {
  cv::Point best = shift;
  for (int y = -reach; y <= reach; ++y) {
    for (int x = -reach; x <= reach; ++x) {
      const cv::Point at = shift + cv::Point(x, y);
      if (map.At(at) > map.At(best)) best = at;
    }
  }
  return best;
}

bool IsPeak(const ShiftCorrelation& map, cv::Point shift) {
  const float value = map.At(shift);
  for (int y = -2; y <= 2; ++y) {
    for (int x = -2; x <= 2; ++x) {
      const float other = map.At(shift + cv::Point(x, y));
      const bool earlier = y < 0 || (y == 0 && x < 0);
      if (other > value || (earlier && other == value)) return false;
    }
  }
  return true;
}

// Peaks outside the neighbourhood, above `least` and of this significance, in raster order.
std::vector<cv::Point> Peaks(const ShiftCorrelation& map, cv::Point shift, int neighbourhood,
                             double least, double significance, double scale) {
  std::vector<cv::Point> peaks;
  for (int row = 0; row < map.values.rows; ++row) {
    const float* values = map.values.ptr<float>(row);
    for (int column = 0; column < map.values.cols; ++column) {
      if (values[column] <= least) continue;
      const cv::Point at = cv::Point(column, row) - map.centre;
      if (Distance(at, shift) > neighbourhood && IsPeak(map, at) &&
          Significance(map, at, scale) >= significance) {
        peaks.push_back(at);
      }
    }
  }
  return peaks;
}

// Vertex of the parabola through a value and its two neighbours, from the middle one.
double Vertex(double left, double middle, double right) {
  const double bend = left - 2 * middle + right;
  return bend < 0 ? std::clamp(0.5 * (left - right) / bend, -0.5, 0.5) : 0.0;
}

cv::Point2d Refined(const ShiftCorrelation& map, cv::Point at) {
  const double middle = map.At(at);
  return {at.x + Vertex(map.At(at - cv::Point(1, 0)), middle, map.At(at + cv::Point(1, 0))),
          at.y + Vertex(map.At(at - cv::Point(0, 1)), middle, map.At(at + cv::Point(0, 1)))};
}

bool DipsBetween(const ShiftCorrelation& map, cv::Point from, cv::Point to) {
  const double level = std::min(map.At(from), map.At(to)) - kDip;
  const int steps = Distance(from, to);
  for (int i = 1; i < steps; ++i) {
    const cv::Point at(cvRound(from.x + static_cast<double>(to.x - from.x) * i / steps),
                       cvRound(from.y + static_cast<double>(to.y - from.y) * i / steps));
    if (map.At(at) < level) return true;
  }
  return false;
}

cv::Point2d Period(const ShiftCorrelation& map, cv::Point measured,
                   const std::vector<cv::Point>& peaks) {
  cv::Point nearest;
  int nearestSquare = 0;
  for (const cv::Point& peak : peaks) {
    const cv::Point way = peak - measured;
    if (map.At(peak) < map.At(measured) - kTrustedLead) continue;
    if (nearestSquare > 0 && way.dot(way) >= nearestSquare) continue;
    if (!DipsBetween(map, measured, peak)) continue;
    nearest = peak;
    nearestSquare = way.dot(way);
  }
  if (nearestSquare == 0) return {};
  return Refined(map, nearest) - Refined(map, measured);
}

// 0 for nothing, 0.5 at what is just trusted, 1 for plenty.
double Grade(double value, double trusted, double full) {
  if (value < trusted) return 0.5 * std::max(0.0, value / trusted);
  return 0.5 + 0.5 * std::min(1.0, (value - trusted) / (full - trusted));
}

}  // namespace

const char* DoubtReasonName(DoubtReason reason) {
  switch (reason) {
    case DoubtReason::kContradicted:
      return "contradicted";
    case DoubtReason::kRepeats:
      return "repeats";
    case DoubtReason::kUnsupported:
      return "unsupported";
    case DoubtReason::kNone:
      break;
  }
  return "";
}

PlacementDoubt JudgePlacement(const PlacementView& before, const PlacementView& current,
                              cv::Point shift, double agreeingShare) {
  PlacementDoubt doubt;
  doubt.confidence = 0;
  doubt.doubtful = true;
  doubt.reason = DoubtReason::kUnsupported;
  if (before.Empty() || before.samples.size() != current.samples.size()) return doubt;

  const int factor = before.factor;
  const ShiftCorrelation map = CorrelateShifts(before, current);
  const cv::Point measured(cvRound(static_cast<double>(shift.x) / factor),
                           cvRound(static_cast<double>(shift.y) / factor));
  const cv::Point best = BestNear(map, measured, std::max(1, kTolerance / factor));
  if (map.At(best) == ShiftCorrelation::kNone) return doubt;

  const double scale = ChanceScale(map);
  const bool significant = Significance(map, best, scale) >= kSignificant;
  doubt.agreement = map.At(best);
  // Peaks further below change nothing.
  const std::vector<cv::Point> peaks =
      Peaks(map, measured, std::max(2, kNeighbourhood / factor),
            std::max(0.0, doubt.agreement - kFullLead), significant ? kSignificant : 0.0, scale);
  const auto rival = std::max_element(
      peaks.begin(), peaks.end(),
      [&map](const cv::Point& a, const cv::Point& b) { return map.At(a) < map.At(b); });
  double lead = kFullLead;
  if (rival != peaks.end()) {
    doubt.rival = map.At(*rival);
    doubt.rivalShift = *rival * factor;
    lead = doubt.agreement - doubt.rival;
  }
  // Where nothing is significant, not even a low correlation that stands alone counts.
  if (!significant) lead = std::min(lead, doubt.agreement);
  const bool leads = lead >= kTrustedLead;
  if (lead > 0) lead *= std::min(1.0, agreeingShare / kTrustedShare);
  doubt.confidence = Grade(lead, kTrustedLead, kFullLead);
  doubt.doubtful = lead < kTrustedLead;
  if (!doubt.doubtful) {
    doubt.reason = DoubtReason::kNone;
  } else if (rival != peaks.end() && lead <= -kTrustedLead &&
             Significance(map, *rival, scale) >= kSignificant) {
    doubt.reason = DoubtReason::kContradicted;
  } else if (significant && !leads) {
    doubt.reason = DoubtReason::kRepeats;
  }
  if (doubt.reason == DoubtReason::kRepeats) doubt.period = Period(map, best, peaks) * factor;
  return doubt;
}

}  // namespace jqhost

#include "host/verdict/doubt/shift_correlation.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace jqhost {
namespace {

constexpr double kLeastArea = 0.06;      // of the view
constexpr int kLeastSide = 8;            // samples
constexpr double kLeastVariance = 0.01;  // of the whole view's
// Squared grey levels; far below the rounding of 8-bit samples, far above that of floats.
constexpr double kFlat = 1e-4;

// Sums over a band of rows, as differences of two rows of an integral.
struct Band {
  const double* top;
  const double* bottom;
  Band(const cv::Mat& integral, int row, int rows)
      : top(integral.ptr<double>(row)), bottom(integral.ptr<double>(row + rows)) {}
  double Sum(int column, int columns) const {
    return (bottom[column + columns] - top[column + columns]) - (bottom[column] - top[column]);
  }
};

cv::Mat Products(const PlacementView& before, const PlacementView& current) {
  cv::Mat products;
  cv::mulSpectrums(before.spectrum, current.spectrum, products, 0, true);
  cv::idft(products, products, cv::DFT_SCALE);
  return products;
}

}  // namespace

float ShiftCorrelation::At(cv::Point shift) const {
  const cv::Point cell = centre + shift;
  const cv::Rect inside(cv::Point(), values.size());
  return inside.contains(cell) ? values.at<float>(cell) : kNone;
}

int ShiftCorrelation::Area(cv::Point shift) const {
  return std::max(0, view.width - std::abs(shift.x)) * std::max(0, view.height - std::abs(shift.y));
}

ShiftCorrelation CorrelateShifts(const PlacementView& before, const PlacementView& current) {
  CV_Assert(before.samples.size() == current.samples.size() && !before.Empty());
  ShiftCorrelation result;
  result.view = before.samples.size();
  result.centre = cv::Point(result.view.width - 1, result.view.height - 1);
  result.values = cv::Mat(2 * result.view.height - 1, 2 * result.view.width - 1, CV_32FC1,
                          cv::Scalar(ShiftCorrelation::kNone));
  const cv::Mat products = Products(before, current);
  const double leastBefore = std::max(kLeastVariance * before.energy, kFlat);
  const double leastCurrent = std::max(kLeastVariance * current.energy, kFlat);

  for (int y = -result.centre.y; y <= result.centre.y; ++y) {
    const int rows = result.view.height - std::abs(y);
    if (rows < kLeastSide) continue;
    const int rowA = std::max(y, 0), rowB = std::max(-y, 0);
    const Band sumA(before.sums, rowA, rows), squareA(before.squares, rowA, rows);
    const Band sumB(current.sums, rowB, rows), squareB(current.squares, rowB, rows);
    const float* product = products.ptr<float>(y < 0 ? y + products.rows : y);
    float* out = result.values.ptr<float>(y + result.centre.y) + result.centre.x;
    for (int x = -result.centre.x; x <= result.centre.x; ++x) {
      const int columns = result.view.width - std::abs(x);
      if (columns < kLeastSide || rows * columns < kLeastArea * result.view.area()) continue;
      const int colA = std::max(x, 0), colB = std::max(-x, 0);
      const double n = static_cast<double>(rows) * columns;
      const double a = sumA.Sum(colA, columns), b = sumB.Sum(colB, columns);
      const double varA = squareA.Sum(colA, columns) - a * a / n;
      const double varB = squareB.Sum(colB, columns) - b * b / n;
      if (varA < leastBefore * n || varB < leastCurrent * n) continue;
      const double ab = product[x < 0 ? x + products.cols : x] - a * b / n;
      out[x] = static_cast<float>(std::clamp(ab / std::sqrt(varA * varB), -1.0, 1.0));
    }
  }
  return result;
}

}  // namespace jqhost

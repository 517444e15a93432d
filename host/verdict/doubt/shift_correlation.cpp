#include "host/verdict/doubt/shift_correlation.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace jqhost {
namespace {

constexpr double kLeastArea = 0.06;      // of the view
constexpr int kLeastCommonSide = 8;      // samples
constexpr double kLeastVariance = 0.01;  // of the whole view's
// Squared grey levels; far below the rounding of 8-bit samples, far above that of floats.
constexpr double kFlat = 1e-4;

// What a band of rows holds left of each column, as differences of two rows of an
// integral.
void FillBand(const cv::Mat& integral, int row, int rows, std::vector<double>& band) {
  const double* top = integral.ptr<double>(row);
  const double* bottom = integral.ptr<double>(row + rows);
  for (std::size_t c = 0; c < band.size(); ++c) band[c] = bottom[c] - top[c];
}

// The sums of the rows that the views have in common at a vertical shift.
struct Bands {
  std::vector<double> sumA, squareA, sumB, squareB;

  explicit Bands(int columns) {
    for (std::vector<double>* band : {&sumA, &squareA, &sumB, &squareB}) {
      band->resize(static_cast<std::size_t>(columns) + 1);
    }
  }
  void Fill(const PlacementView& before, const PlacementView& current, int y, int rows) {
    FillBand(before.sums, std::max(y, 0), rows, sumA);
    FillBand(before.squares, std::max(y, 0), rows, squareA);
    FillBand(current.sums, std::max(-y, 0), rows, sumB);
    FillBand(current.squares, std::max(-y, 0), rows, squareB);
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
  Bands bands(result.view.width);
  for (int y = -result.centre.y; y <= result.centre.y; ++y) {
    const int rows = result.view.height - std::abs(y);
    const int columnsNeeded = std::max(
        kLeastCommonSide, static_cast<int>(std::ceil(kLeastArea * result.view.area() / rows)));
    const int reach = result.view.width - columnsNeeded;
    if (rows < kLeastCommonSide || reach < 0) continue;
    bands.Fill(before, current, y, rows);
    const float* product = products.ptr<float>(y < 0 ? y + products.rows : y);
    float* out = result.values.ptr<float>(y + result.centre.y) + result.centre.x;
    for (int x = -reach; x <= reach; ++x) {
      const int columns = result.view.width - std::abs(x);
      const int colA = std::max(x, 0), colB = std::max(-x, 0);
      const auto over = [columns](const std::vector<double>& band, int column) {
        return band[static_cast<std::size_t>(column + columns)] -
               band[static_cast<std::size_t>(column)];
      };
      const double n = static_cast<double>(rows) * columns;
      const double a = over(bands.sumA, colA), b = over(bands.sumB, colB);
      const double varA = over(bands.squareA, colA) - a * a / n;
      const double varB = over(bands.squareB, colB) - b * b / n;
      if (varA < leastBefore * n || varB < leastCurrent * n) continue;
      const double ab = product[x < 0 ? x + products.cols : x] - a * b / n;
      const float r = static_cast<float>(ab) / std::sqrt(static_cast<float>(varA * varB));
      out[x] = std::clamp(r, -1.0f, 1.0f);
    }
  }
  return result;
}

}  // namespace jqhost

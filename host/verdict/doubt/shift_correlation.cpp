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

// What a band of rows holds in its first and in its last columns, by their number, as
// differences of two rows of an integral. Single precision is enough from here on: it is
// that of the products.
struct Band {
  std::vector<float> first, last;

  explicit Band(int columns)
      : first(static_cast<std::size_t>(columns) + 1), last(static_cast<std::size_t>(columns) + 1) {}
  void Fill(const cv::Mat& integral, int row, int rows) {
    const double* top = integral.ptr<double>(row);
    const double* bottom = integral.ptr<double>(row + rows);
    const std::size_t end = first.size() - 1;
    const double all = bottom[end] - top[end];
    for (std::size_t c = 0; c <= end; ++c) {
      const double left = bottom[c] - top[c];
      first[c] = static_cast<float>(left);
      last[end - c] = static_cast<float>(all - left);
    }
  }
};

// The rows that the views have in common at a vertical shift.
struct Bands {
  Band sumA, squareA, sumB, squareB;

  explicit Bands(int columns) : sumA(columns), squareA(columns), sumB(columns), squareB(columns) {}
  void Fill(const PlacementView& before, const PlacementView& current, int y, int rows) {
    sumA.Fill(before.sums, std::max(y, 0), rows);
    squareA.Fill(before.squares, std::max(y, 0), rows);
    sumB.Fill(current.sums, std::max(-y, 0), rows);
    squareB.Fill(current.squares, std::max(-y, 0), rows);
  }
};

struct LeastVariance {
  float before, current;  // of a sample
};

// Covariance and product of variances, both times the square of the area, for all
// common widths from `least` columns to `most`. One more column moves the shift by one,
// `step` cells along `covariance`, `variances` and `products`, which point at the
// narrowest. The product is 0 where a common area is nearly flat.
struct Sums {
  const float *sumA, *squareA, *sumB, *squareB;
};
template <int kStep>
void Correlate(const Sums& sums, int rows, int least, int most, const LeastVariance& floor,
               const float* products, float* covariance, float* variances) {
  for (int c = least; c <= most; ++c) {
    const int cell = kStep * (c - least);
    const float n = static_cast<float>(rows) * static_cast<float>(c);
    const float inverse = 1.0f / n;
    const float a = sums.sumA[c], b = sums.sumB[c];
    const float varA = sums.squareA[c] - a * a * inverse;
    const float varB = sums.squareB[c] - b * b * inverse;
    covariance[cell] = products[cell] - a * b * inverse;
    const bool flat = varA < floor.before * n || varB < floor.current * n;
    variances[cell] = flat ? 0.0f : varA * varB;
  }
}

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
  const int width = result.view.width, height = result.view.height;
  result.centre = cv::Point(width - 1, height - 1);
  result.values =
      cv::Mat(2 * height - 1, 2 * width - 1, CV_32FC1, cv::Scalar(ShiftCorrelation::kNone));
  const cv::Mat products = Products(before, current);
  const LeastVariance floor{static_cast<float>(std::max(kLeastVariance * before.energy, kFlat)),
                            static_cast<float>(std::max(kLeastVariance * current.energy, kFlat))};
  Bands bands(width);
  cv::Mat roots(1, result.values.cols, CV_32FC1);
  for (int y = -result.centre.y; y <= result.centre.y; ++y) {
    const int rows = height - std::abs(y);
    const int least = std::max(kLeastCommonSide,
                               static_cast<int>(std::ceil(kLeastArea * result.view.area() / rows)));
    const int reach = width - least;
    if (rows < kLeastCommonSide || reach < 0) continue;
    bands.Fill(before, current, y, rows);
    const float* product = products.ptr<float>(y < 0 ? y + products.rows : y);
    float* out = result.values.ptr<float>(y + result.centre.y) + result.centre.x;
    float* root = roots.ptr<float>() + result.centre.x;
    // To the left the first columns of the view before meet the last of the new one.
    Correlate<1>({bands.sumA.first.data(), bands.squareA.first.data(), bands.sumB.last.data(),
                  bands.squareB.last.data()},
                 rows, least, width - 1, floor, product + products.cols - reach, out - reach,
                 root - reach);
    Correlate<-1>({bands.sumA.last.data(), bands.squareA.last.data(), bands.sumB.first.data(),
                   bands.squareB.first.data()},
                  rows, least, width, floor, product + reach, out + reach, root + reach);
    const cv::Mat used = roots.colRange(result.centre.x - reach, result.centre.x + reach + 1);
    cv::sqrt(used, used);
    for (int x = -reach; x <= reach; ++x) {
      const float r = std::min(1.0f, std::max(-1.0f, out[x] / root[x]));
      out[x] = root[x] > 0.0f ? r : ShiftCorrelation::kNone;
    }
  }
  return result;
}

}  // namespace jqhost

#include "host/flat/smooth_surface.h"

#include <algorithm>
#include <array>
#include <opencv2/imgproc.hpp>

namespace jqhost {
namespace {

constexpr int kDegree = 2;
constexpr int kTerms = (kDegree + 1) * (kDegree + 2) / 2;
using Terms = std::array<double, kTerms>;

// The terms at the centre of cell or pixel `i` of `count`, both from -1 to 1.
double Place(int i, int count) {
  return (2.0 * i + 1.0) / count - 1.0;
}

Terms TermsAt(double x, double y) {
  Terms terms;
  int next = 0;
  double yPower = 1.0;
  for (int b = 0; b <= kDegree; ++b, yPower *= y) {
    double product = yPower;
    for (int a = 0; a + b <= kDegree; ++a, product *= x) terms[next++] = product;
  }
  return terms;
}

double Sum(const Terms& terms, const Terms& weights) {
  double sum = 0.0;
  for (int i = 0; i < kTerms; ++i) sum += terms[i] * weights[i];
  return sum;
}

Terms FitPolynomial(const cv::Mat& cells) {
  cv::Mat normal = cv::Mat::zeros(kTerms, kTerms, CV_64F);
  cv::Mat right = cv::Mat::zeros(kTerms, 1, CV_64F);
  for (int r = 0; r < cells.rows; ++r) {
    for (int c = 0; c < cells.cols; ++c) {
      const Terms terms = TermsAt(Place(c, cells.cols), Place(r, cells.rows));
      for (int i = 0; i < kTerms; ++i) {
        for (int k = 0; k < kTerms; ++k) normal.at<double>(i, k) += terms[i] * terms[k];
        right.at<double>(i) += terms[i] * cells.at<double>(r, c);
      }
    }
  }
  // The smallest solution, should a tiny grid not determine all terms.
  cv::Mat solution;
  cv::solve(normal, right, solution, cv::DECOMP_SVD);
  Terms weights;
  std::copy_n(solution.ptr<double>(), kTerms, weights.begin());
  return weights;
}

cv::Mat Evaluate(const Terms& weights, cv::Size size) {
  cv::Mat surface(size, CV_64F);
  for (int r = 0; r < size.height; ++r) {
    double* row = surface.ptr<double>(r);
    const double y = Place(r, size.height);
    for (int c = 0; c < size.width; ++c) row[c] = Sum(TermsAt(Place(c, size.width), y), weights);
  }
  return surface;
}

}  // namespace

cv::Mat SmoothSurface(const cv::Mat& cells, cv::Size picture) {
  const Terms weights = FitPolynomial(cells);
  cv::Mat left = cells - Evaluate(weights, cells.size());
  const double deviation = std::max(1.0, std::max(cells.cols, cells.rows) / 6.0);
  cv::GaussianBlur(left, left, cv::Size(), deviation, deviation, cv::BORDER_REFLECT);
  cv::Mat fine;
  cv::resize(left, fine, picture, 0, 0, cv::INTER_LINEAR);
  return Evaluate(weights, picture) + fine;
}

}  // namespace jqhost

#include <algorithm>
#include <cmath>
#include <limits>

#include "registration/kernels/corner_rows.h"
#include "registration/kernels/corners.h"

namespace jqstitching {
namespace {

double Mean(double sum, const cv::Mat& image) {
  // The whole image's area, although the sum covers the interior only: this lowers
  // the threshold.
  return sum / static_cast<std::int32_t>(static_cast<std::uint32_t>(image.rows) *
                                         static_cast<std::uint32_t>(image.cols));
}

double SumInOrder(const cv::Mat& image, ResponseScratch& scratch, std::vector<float>& row) {
  double sum = 0;
  row.resize(static_cast<size_t>(image.cols) + kRowPadding);
  ForEachResponseRow(
      image, scratch, [&](int) { return row.data(); },
      [&](int, const float* response, double) {
        for (int j = kCornerMargin; j < image.cols - kCornerMargin; ++j) sum += response[j];
      });
  return sum;
}

}  // namespace

void FindCandidates(const cv::Mat& image, MeanSum how, CornerScratch& scratch) {
  std::vector<Candidate>& candidates = scratch.candidates;
  candidates.clear();
  const int rows = image.rows, cols = image.cols;
  if (rows <= 2 * kCornerMargin || cols <= 2 * kCornerMargin) return;

  // The last three response rows; what lies outside the interior is zero.
  const int begin = kCornerMargin, end = cols - kCornerMargin;
  const size_t width = static_cast<size_t>(cols) + kRowPadding;
  scratch.ring.assign(3 * width, 0.0f);
  scratch.columns.resize(static_cast<size_t>(cols));
  const auto ring = [&](int r) { return scratch.ring.data() + static_cast<size_t>(r % 3) * width; };
  const auto collect = [&](int r) {
    const float* row = ring(r);
    const size_t count =
        MaximaRow(ring(r - 1), row, ring(r + 1), begin, end, scratch.columns.data());
    for (size_t k = 0; k < count; ++k) {
      const int j = scratch.columns[k];
      candidates.push_back({row[j], cv::Point(j, r)});
    }
  };
  double sum = 0;
  ForEachResponseRow(image, scratch.response, ring, [&](int r, const float*, double rowSum) {
    sum += rowSum;
    if (r > kCornerMargin) collect(r - 1);
  });
  const int last = rows - kCornerMargin - 1;
  std::fill_n(ring(last + 1), width, 0.0f);
  collect(last);

  // Two sums of n terms that are not negative differ by less than 2 n u / (1 - n u)
  // of either, u being half a unit in the last place.
  double mean = Mean(sum, image);
  const double terms = static_cast<double>(rows) * cols;
  const double doubt = std::abs(mean) * 4 * terms * std::numeric_limits<double>::epsilon();
  const auto isDoubtful = [&](const Candidate& c) { return std::abs(c.response - mean) <= doubt; };
  if (how == MeanSum::kInOrder || std::any_of(candidates.begin(), candidates.end(), isDoubtful)) {
    mean = Mean(SumInOrder(image, scratch.response, scratch.ring), image);
  }
  const auto below = [&](const Candidate& c) { return !(static_cast<double>(c.response) > mean); };
  candidates.erase(std::remove_if(candidates.begin(), candidates.end(), below), candidates.end());
}

}  // namespace jqstitching

#include "registration/kernels/matching.h"

#include <cmath>
#include <limits>
#include <optional>

namespace jqstitching {
namespace {

// On squared distances: only near-ties are rejected.
constexpr double kRatio = 0.98;

// The nearest row of `first` to `wanted`, if it is clearly nearer than the
// runner-up.
std::optional<int> NearestInStatedOrder(const cv::Mat& first, const float* wanted, int columns) {
  float nearest = std::numeric_limits<float>::infinity(), runnerUp = nearest;
  int index = 0;
  for (int k = 0; k < first.rows; ++k) {
    const float* row = first.ptr<float>(k);
    float sum = 0;
    for (int c = 0; c < columns; ++c) {
      const float difference = wanted[c] - row[c];
      sum += difference * difference;
    }
    if (sum < nearest) {
      runnerUp = nearest;
      nearest = sum;
      index = k;
    } else if (sum < runnerUp) {
      runnerUp = sum;
    }
  }
  // A row alone is its own runner-up. Two exact duplicates give 0 / 0, which is not
  // below.
  if (first.rows < 2 || !(static_cast<double>(nearest) / runnerUp < kRatio)) return std::nullopt;
  return index;
}

// The verdict by whole numbers; nothing where only the stated sums can tell.
enum class Verdict { kMatch, kNone, kUnsettled };

Verdict Settle(const Nearest& nearest, int columns) {
  constexpr std::int32_t kExact = 1 << 24;
  if (nearest.runnerUp == 0) return Verdict::kNone;
  const double ratio = static_cast<double>(nearest.distance) / nearest.runnerUp;
  if (nearest.runnerUp < kExact) return ratio < kRatio ? Verdict::kMatch : Verdict::kNone;
  // One rounding for the square and one for each sum, in both distances, twice over.
  const double doubt = 4.0 * (columns + 2) * std::ldexp(1.0, -24);
  if (ratio < kRatio * (1 - doubt)) return Verdict::kMatch;
  if (ratio > kRatio * (1 + doubt)) return Verdict::kNone;
  return Verdict::kUnsettled;
}

}  // namespace

std::vector<cv::Point> MatchInStatedOrder(const cv::Mat& first, const cv::Mat& second) {
  std::vector<cv::Point> pairs;
  for (int i = 0; i < second.rows; ++i) {
    const auto index = NearestInStatedOrder(first, second.ptr<float>(i), second.cols);
    if (index) pairs.emplace_back(i, *index);
  }
  return pairs;
}

std::vector<cv::Point> MatchDescriptors(const PairedDescriptors& first,
                                        const PairedDescriptors& second) {
  std::vector<cv::Point> pairs;
  if (first.count() < 2 || second.count() == 0) return pairs;
  if (!FitsWholeNumbers(first, second)) {
    cv::Mat a, b;
    first.rows().convertTo(a, CV_32F);
    second.rows().convertTo(b, CV_32F);
    return MatchInStatedOrder(a, b);
  }
  const int columns = second.rows().cols;
  std::vector<std::int32_t> distances(first.stride());
  cv::Mat floats;  // of `first`, made for the first row that needs it
  for (int i = 0; i < second.rows().rows; ++i) {
    const auto* wanted = second.rows().ptr<std::uint16_t>(i);
    WholeDistances(first, wanted, static_cast<size_t>(columns), distances.data());
    const Nearest nearest = FindNearest(distances.data(), first.count());
    const Verdict verdict = Settle(nearest, columns);
    if (verdict == Verdict::kMatch) pairs.emplace_back(i, static_cast<int>(nearest.index));
    if (verdict != Verdict::kUnsettled) continue;
    if (floats.empty()) first.rows().convertTo(floats, CV_32F);
    const std::vector<float> row(wanted, wanted + columns);
    const auto index = NearestInStatedOrder(floats, row.data(), columns);
    if (index) pairs.emplace_back(i, *index);
  }
  return pairs;
}

}  // namespace jqstitching

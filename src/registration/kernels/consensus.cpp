#include "registration/kernels/consensus.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

#include "picture/wrapping.h"

namespace jqstitching {

namespace {

// Far enough from 2^24 that single precision holds every sum of the test exactly.
constexpr int kExactLimit = 1 << 22;

bool IsExact(const std::vector<cv::Point>& points) {
  for (const cv::Point& p : points) {
    if (p.x < -kExactLimit || p.x > kExactLimit || p.y < -kExactLimit || p.y > kExactLimit) {
      return false;
    }
  }
  return true;
}

// The test on exact coordinates compares translations, in whole numbers.
class ExactAgreement {
 public:
  ExactAgreement(const std::vector<cv::Point>& first, const std::vector<cv::Point>& second)
      : m_x(first.size()), m_y(first.size()) {
    for (size_t k = 0; k < first.size(); ++k) {
      m_x[k] = first[k].x - second[k].x;
      m_y[k] = first[k].y - second[k].y;
    }
  }
  bool operator()(size_t i, size_t j) const {
    const int dx = std::min(std::abs(m_x[i] - m_x[j]), kRadius);
    const int dy = std::min(std::abs(m_y[i] - m_y[j]), kRadius);
    return dx * dx + dy * dy < kRadius * kRadius;
  }

 private:
  static constexpr int kRadius = 4;
  std::vector<int> m_x, m_y;
};

// The test as it rounds: coordinates and translation in single precision, the
// distance in double.
class RoundedAgreement {
 public:
  RoundedAgreement(const std::vector<cv::Point>& first, const std::vector<cv::Point>& second)
      : m_first(first), m_second(second) {}
  bool operator()(size_t i, size_t j) const {
    const auto tx = static_cast<float>(WrappingDifference(m_first[i].x, m_second[i].x));
    const auto ty = static_cast<float>(WrappingDifference(m_first[i].y, m_second[i].y));
    const float ex = (static_cast<float>(m_second[j].x) + tx) - static_cast<float>(m_first[j].x);
    const float ey = (static_cast<float>(m_second[j].y) + ty) - static_cast<float>(m_first[j].y);
    const double wx = ex, wy = ey;
    return std::sqrt(wx * wx + wy * wy) < 4.0;
  }

 private:
  const std::vector<cv::Point>& m_first;
  const std::vector<cv::Point>& m_second;
};

template <class Agreement>
Consensus BestHypothesis(size_t count, const Agreement& agree) {
  Consensus best;
  int most = 0;
  for (size_t i = 0; i < count; ++i) {
    int support = 0;
    for (size_t j = 0; j < count; ++j) support += agree(i, j) ? 1 : 0;
    if (support <= most) continue;  // ties keep the earlier hypothesis
    most = support;
    best.hypothesis = static_cast<int>(i);
  }
  if (most == 0) return best;
  best.support.reserve(static_cast<size_t>(most));
  for (size_t j = 0; j < count; ++j) {
    if (agree(static_cast<size_t>(best.hypothesis), j)) best.support.push_back(static_cast<int>(j));
  }
  return best;
}

}  // namespace

Consensus FindConsensus(const std::vector<cv::Point>& first, const std::vector<cv::Point>& second) {
  const size_t count = first.size();
  if (second.size() < count) {
    throw std::out_of_range("the second list of matched points is shorter than the first");
  }
  if (IsExact(first) && IsExact(second)) {
    return BestHypothesis(count, ExactAgreement(first, second));
  }
  return BestHypothesis(count, RoundedAgreement(first, second));
}

}  // namespace jqstitching

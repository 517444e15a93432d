#include "registration/consensus.h"

#include <cmath>

#include "jqstitchingalgorithm.h"

namespace jqstitching {

int WrappingDifference(int a, int b) {
  return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

Consensus FindConsensus(const std::vector<cv::Point>& first, const std::vector<cv::Point>& second) {
  Consensus best;
  const size_t count = first.size();
  std::vector<int> support;
  for (size_t i = 0; i < count; ++i) {
    const auto tx = static_cast<float>(WrappingDifference(first[i].x, second.at(i).x));
    const auto ty = static_cast<float>(WrappingDifference(first[i].y, second.at(i).y));
    support.clear();
    for (size_t j = 0; j < count; ++j) {
      const float ex = (static_cast<float>(second.at(j).x) + tx) - static_cast<float>(first[j].x);
      const float ey = (static_cast<float>(second.at(j).y) + ty) - static_cast<float>(first[j].y);
      const double wx = ex, wy = ey;
      if (std::sqrt(wx * wx + wy * wy) < 4.0) support.push_back(static_cast<int>(j));
    }
    if (support.size() > best.support.size()) {
      best.support = support;
      best.hypothesis = static_cast<int>(i);
    }
  }
  return best;
}

}  // namespace jqstitching

void JQStitchingAlgorithm::RansacMatchPointArrayFun(std::vector<cv::Point> first,
                                                    std::vector<cv::Point> second,
                                                    std::vector<cv::Point>& inliersFirst,
                                                    std::vector<cv::Point>& inliersSecond,
                                                    float& tx, float& ty) {
  using namespace jqstitching;
  if (first.empty()) return;
  const Consensus best = FindConsensus(first, second);
  // Coordinates beyond 2^24 can leave every match without support, its own
  // included; the translation is then the last one tried.
  const size_t winner = best.support.empty() ? first.size() - 1 : best.hypothesis;
  inliersFirst.reserve(inliersFirst.size() + best.support.size());
  inliersSecond.reserve(inliersSecond.size() + best.support.size());
  for (int j : best.support) {
    inliersFirst.push_back(first[j]);
    inliersSecond.push_back(second[j]);
  }
  const cv::Point& from = second[winner];
  const cv::Point& to = first[winner];
  tx = static_cast<float>(WrappingDifference(to.x, from.x));
  ty = static_cast<float>(WrappingDifference(to.y, from.y));
}

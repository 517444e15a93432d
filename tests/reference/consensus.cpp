#include <cmath>
#include <cstddef>

#include "reference/algorithm.h"
#include "reference/integer32.h"

namespace reference {
namespace {

const double kRadius = 4.0;

double Distance(const cv::Point& first, const cv::Point& second, float tx, float ty) {
  const float movedX = static_cast<float>(second.x) + tx;
  const float movedY = static_cast<float>(second.y) + ty;
  const float ex = movedX - static_cast<float>(first.x);
  const float ey = movedY - static_cast<float>(first.y);
  const double dx = ex;
  const double dy = ey;
  return std::sqrt(dx * dx + dy * dy);
}

}  // namespace

void Algorithm::RansacMatchPointArrayFun(std::vector<cv::Point> first,
                                         std::vector<cv::Point> second,
                                         std::vector<cv::Point>& inliersFirst,
                                         std::vector<cv::Point>& inliersSecond, float& tx,
                                         float& ty) {
  std::vector<std::size_t> best;
  std::size_t bestHypothesis = 0;
  for (std::size_t i = 0; i < first.size(); ++i) {
    const float hypothesisX = static_cast<float>(Sub32(first[i].x, second.at(i).x));
    const float hypothesisY = static_cast<float>(Sub32(first[i].y, second.at(i).y));
    std::vector<std::size_t> support;
    for (std::size_t j = 0; j < first.size(); ++j) {
      if (Distance(first[j], second.at(j), hypothesisX, hypothesisY) < kRadius) {
        support.push_back(j);
      }
    }
    if (support.size() > best.size()) {
      best = support;
      bestHypothesis = i;
    }
  }
  // Large coordinates lose bits as floats, so that in theory no hypothesis
  // supports even itself; the last one stays in the outputs then.
  if (best.empty()) {
    if (!first.empty()) {
      tx = static_cast<float>(Sub32(first.back().x, second[first.size() - 1].x));
      ty = static_cast<float>(Sub32(first.back().y, second[first.size() - 1].y));
    }
    return;
  }
  for (std::size_t j : best) {
    inliersFirst.push_back(first[j]);
    inliersSecond.push_back(second[j]);
  }
  tx = static_cast<float>(Sub32(first[bestHypothesis].x, second[bestHypothesis].x));
  ty = static_cast<float>(Sub32(first[bestHypothesis].y, second[bestHypothesis].y));
}

}  // namespace reference

#include "jqstitchingalgorithm.h"
#include "picture/wrapping.h"
#include "registration/kernels/consensus.h"

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

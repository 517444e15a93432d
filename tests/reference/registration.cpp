#include <opencv2/imgproc.hpp>

#include "reference/algorithm.h"

namespace reference {

int Algorithm::ImageMosaicFun(cv::Mat first, cv::Mat second, int& offsetX, int& offsetY,
                              int& supportCount) {
  m_pairCount = 0;
  // The first image's channel count decides for both.
  if (first.channels() != 1) {
    cv::cvtColor(first, first, cv::COLOR_RGB2GRAY);
    cv::cvtColor(second, second, cv::COLOR_RGB2GRAY);
  }
  std::vector<cv::Point> cornersFirst;
  std::vector<cv::Point> cornersSecond;
  FindHarrisCornerCoordianteFun(first, cornersFirst);
  FindHarrisCornerCoordianteFun(second, cornersSecond);
  if (cornersFirst.empty() || cornersSecond.empty()) return 0;

  cv::Mat descriptorsFirst;
  cv::Mat descriptorsSecond;
  NoRotaFeatureDescriber(first, cornersFirst, descriptorsFirst);
  NoRotaFeatureDescriber(second, cornersSecond, descriptorsSecond);

  std::vector<cv::Point> pairs;
  CalacDistanceIndexFun(descriptorsFirst, descriptorsSecond, pairs);
  std::vector<cv::Point> matchedFirst;
  std::vector<cv::Point> matchedSecond;
  RoughMatchPoint(cornersFirst, cornersSecond, pairs, matchedFirst, matchedSecond);
  m_pairCount = static_cast<int>(matchedFirst.size());
  std::vector<cv::Point> inliersFirst;
  std::vector<cv::Point> inliersSecond;
  float tx = 0.0f;
  float ty = 0.0f;
  RansacMatchPointArrayFun(matchedFirst, matchedSecond, inliersFirst, inliersSecond, tx, ty);

  supportCount = static_cast<int>(inliersFirst.size());
  offsetX = static_cast<int>(tx);
  offsetY = static_cast<int>(ty);
  return 0;
}

}  // namespace reference

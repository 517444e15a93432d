#include <opencv2/imgproc.hpp>

#include "jqstitchingalgorithm.h"
#include "picture/grey.h"
#include "registration/registration_step.h"

int JQStitchingAlgorithm::ImageMosaicFun(cv::Mat first, cv::Mat second, int& offsetX, int& offsetY,
                                         int& supportCount) {
  using namespace jqstitching;
  if (CanRegisterShared(first, second)) {
    Workspace& workspace = m_workspace.get();
    const bool halved = m_nDetectLevel < 3;
    m_nDownScale = halved ? 2 : 1;  // also where a picture turns out too small to halve
    const GreyAndHalf& current =
        halved ? workspace.current.make(second) : workspace.current.makeGrey(second);
    RegisterShared(*this, workspace, first, 0, current, offsetX, offsetY, supportCount);
    return 0;
  }

  // Pictures of other kinds go through the steps one by one. The first image
  // decides for both, and code 7 holds for frames in blue-green-red order too.
  if (first.channels() != 1) {
    cv::cvtColor(first, first, cv::COLOR_RGB2GRAY);
    cv::cvtColor(second, second, cv::COLOR_RGB2GRAY);
  }
  std::vector<cv::Point> cornersFirst, cornersSecond;
  FindHarrisCornerCoordianteFun(first, cornersFirst);
  FindHarrisCornerCoordianteFun(second, cornersSecond);
  if (cornersFirst.empty() || cornersSecond.empty()) return 0;

  cv::Mat descriptorsFirst, descriptorsSecond;
  NoRotaFeatureDescriber(first, cornersFirst, descriptorsFirst);
  NoRotaFeatureDescriber(second, cornersSecond, descriptorsSecond);
  std::vector<cv::Point> pairs, matchedFirst, matchedSecond, inliersFirst, inliersSecond;
  CalacDistanceIndexFun(descriptorsFirst, descriptorsSecond, pairs);
  RoughMatchPoint(cornersFirst, cornersSecond, pairs, matchedFirst, matchedSecond);
  float tx = 0, ty = 0;
  RansacMatchPointArrayFun(matchedFirst, matchedSecond, inliersFirst, inliersSecond, tx, ty);
  supportCount = static_cast<int>(inliersFirst.size());
  offsetX = static_cast<int>(tx);
  offsetY = static_cast<int>(ty);
  return 0;
}

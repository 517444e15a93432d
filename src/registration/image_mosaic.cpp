#include <opencv2/imgproc.hpp>

#include "engine/picture_check.h"
#include "jqstitchingalgorithm.h"
#include "picture/grey.h"
#include "registration/registration_step.h"

jqstitching::CornersFound jqstitching::Register(JQStitchingAlgorithm& engine, Workspace& workspace,
                                                cv::Mat first, cv::Mat second, int& offsetX,
                                                int& offsetY, int& supportCount) {
  if (CanRegisterShared(first, second)) {
    // Also where a picture turns out too small to halve.
    engine.m_nDownScale = CornerScale(engine.m_nDetectLevel);
    const GreyAndHalf& current = workspace.current.make(second, engine.m_nDownScale == 2);
    return RegisterShared(engine, workspace, first, 0, current, offsetX, offsetY, supportCount);
  }

  // Pictures of other kinds go through the steps one by one. The first image
  // decides for both, and code 7 holds for frames in blue-green-red order too.
  if (first.channels() != 1) {
    cv::cvtColor(first, first, cv::COLOR_RGB2GRAY);
    cv::cvtColor(second, second, cv::COLOR_RGB2GRAY);
  }
  std::vector<cv::Point> cornersFirst, cornersSecond;
  engine.FindHarrisCornerCoordianteFun(first, cornersFirst);
  engine.FindHarrisCornerCoordianteFun(second, cornersSecond);
  CornersFound found{!cornersFirst.empty(), !cornersSecond.empty()};
  if (!found.first || !found.second) return found;

  cv::Mat descriptorsFirst, descriptorsSecond;
  engine.NoRotaFeatureDescriber(first, cornersFirst, descriptorsFirst);
  engine.NoRotaFeatureDescriber(second, cornersSecond, descriptorsSecond);
  std::vector<cv::Point> pairs, matchedFirst, matchedSecond, inliersFirst, inliersSecond;
  engine.CalacDistanceIndexFun(descriptorsFirst, descriptorsSecond, pairs);
  engine.RoughMatchPoint(cornersFirst, cornersSecond, pairs, matchedFirst, matchedSecond);
  float tx = 0, ty = 0;
  engine.RansacMatchPointArrayFun(matchedFirst, matchedSecond, inliersFirst, inliersSecond, tx, ty);
  found.matched = static_cast<int>(pairs.size());
  supportCount = static_cast<int>(inliersFirst.size());
  offsetX = static_cast<int>(tx);
  offsetY = static_cast<int>(ty);
  return found;
}

int JQStitchingAlgorithm::ImageMosaicFun(cv::Mat first, cv::Mat second, int& offsetX, int& offsetY,
                                         int& supportCount) {
  jqstitching::CheckPictures(first, second);
  jqstitching::Register(*this, m_workspace.get(), first, second, offsetX, offsetY, supportCount);
  return 0;
}

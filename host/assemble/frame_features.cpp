#include "host/assemble/frame_features.h"

#include <opencv2/imgproc.hpp>

namespace jqhost {
namespace {

constexpr int kRefinements = 3;
// The engine's radius, within which it calls a match agreeing.
constexpr double kAgreeingRadius = 4.0;

cv::Point2d MeanNear(const std::vector<cv::Point>& first, const std::vector<cv::Point>& second,
                     cv::Point2d shift) {
  cv::Point2d sum;
  int count = 0;
  for (std::size_t i = 0; i < first.size(); ++i) {
    const cv::Point2d match = first[i] - second[i];
    const cv::Point2d off = match - shift;
    if (off.dot(off) >= kAgreeingRadius * kAgreeingRadius) continue;
    sum += match;
    ++count;
  }
  return count > 0 ? sum / count : shift;
}

}  // namespace

FrameFeatures FindFeatures(JQStitchingAlgorithm& engine, const cv::Mat& frame) {
  cv::Mat grey = frame;
  // The code that the engine uses everywhere, although frames are blue-green-red.
  if (frame.channels() > 1) cv::cvtColor(frame, grey, cv::COLOR_RGB2GRAY);
  FrameFeatures features;
  engine.FindHarrisCornerCoordianteFun(grey, features.corners);
  if (!features.corners.empty()) {
    engine.NoRotaFeatureDescriber(grey, features.corners, features.descriptors);
  }
  return features;
}

PairMeasure MeasureShift(JQStitchingAlgorithm& engine, const FrameFeatures& first,
                         const FrameFeatures& second) {
  PairMeasure measure;
  if (first.corners.empty() || second.corners.empty()) return measure;
  std::vector<cv::Point> pairs, matchedFirst, matchedSecond, agreeingFirst, agreeingSecond;
  engine.CalacDistanceIndexFun(first.descriptors, second.descriptors, pairs);
  engine.RoughMatchPoint(first.corners, second.corners, pairs, matchedFirst, matchedSecond);
  float x = 0, y = 0;
  engine.RansacMatchPointArrayFun(matchedFirst, matchedSecond, agreeingFirst, agreeingSecond, x, y);
  measure.matched = static_cast<int>(pairs.size());
  measure.matches = static_cast<int>(agreeingFirst.size());
  measure.shift = cv::Point(static_cast<int>(x), static_cast<int>(y));
  measure.fineShift = measure.shift;
  for (int i = 0; i < kRefinements; ++i) {
    measure.fineShift = MeanNear(matchedFirst, matchedSecond, measure.fineShift);
  }
  return measure;
}

}  // namespace jqhost

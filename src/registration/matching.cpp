#include "registration/matching.h"

#include "jqstitchingalgorithm.h"

namespace jqstitching {

std::vector<cv::Point> MatchDescriptors(const TransposedDescriptors& first, const cv::Mat& second) {
  // On squared distances: only near-ties are rejected.
  constexpr double kRatio = 0.98;
  std::vector<cv::Point> pairs;
  if (first.count() == 0) return pairs;
  std::vector<float> distances(first.stride());
  for (int i = 0; i < second.rows; ++i) {
    SquaredDistances(first, second.ptr<float>(i), static_cast<size_t>(second.cols),
                     distances.data());
    const Nearest nearest = FindNearest(distances.data(), first.count());
    // Two exact duplicates give 0 / 0, which is not below.
    if (static_cast<double>(nearest.distance) / nearest.runnerUp < kRatio) {
      pairs.emplace_back(i, static_cast<int>(nearest.index));
    }
  }
  return pairs;
}

}  // namespace jqstitching

void JQStitchingAlgorithm::CalacDistanceIndexFun(cv::Mat first, cv::Mat second,
                                                 std::vector<cv::Point>& pairs) {
  if (first.rows == 0 || second.rows == 0) return;
  if (first.cols < second.cols || first.channels() != 1 || second.channels() != 1) {
    CV_Error(cv::Error::StsUnmatchedSizes,
             cv::format("descriptors need one channel and as many columns in the first list as in "
                        "the second, not %d x %d and %d x %d",
                        first.cols, first.channels(), second.cols, second.channels()));
  }
  first.convertTo(first, CV_32F);
  second.convertTo(second, CV_32F);
  if (!cv::checkRange(first) || !cv::checkRange(second)) {
    CV_Error(cv::Error::StsOutOfRange, "a descriptor holds a value that is not finite");
  }
  const std::vector<cv::Point> found =
      jqstitching::MatchDescriptors(jqstitching::TransposedDescriptors(first), second);
  pairs.insert(pairs.end(), found.begin(), found.end());
}

void JQStitchingAlgorithm::RoughMatchPoint(std::vector<cv::Point> cornersFirst,
                                           std::vector<cv::Point> cornersSecond,
                                           std::vector<cv::Point> pairs,
                                           std::vector<cv::Point>& matchedFirst,
                                           std::vector<cv::Point>& matchedSecond) {
  std::vector<cv::Point> first = matchedFirst, second = matchedSecond;
  for (const cv::Point& pair : pairs) {
    first.push_back(cornersFirst.at(static_cast<size_t>(pair.y)));
    second.push_back(cornersSecond.at(static_cast<size_t>(pair.x)));
  }
  matchedFirst.swap(first);
  matchedSecond.swap(second);
}

#include "registration/matching.h"

#include "jqstitchingalgorithm.h"

namespace jqstitching {

std::vector<cv::Point> MatchDescriptors(const cv::Mat& first, const cv::Mat& second) {
  std::vector<cv::Point> pairs;
  if (first.rows == 0 || second.rows == 0) return pairs;
  if (first.cols < second.cols) {
    CV_Error(cv::Error::StsUnmatchedSizes,
             cv::format("first has %d columns, second has %d", first.cols, second.cols));
  }
  cv::Mat a, b;
  first.convertTo(a, CV_32F);
  second.convertTo(b, CV_32F);
  cv::Mat distances(1, a.rows, CV_32F);
  for (int i = 0; i < b.rows; ++i) {
    const float* wanted = b.ptr<float>(i);
    for (int k = 0; k < a.rows; ++k) {
      const float* row = a.ptr<float>(k);
      float sum = 0;
      for (int c = 0; c < b.cols; ++c) {
        const float difference = wanted[c] - row[c];
        sum += difference * difference;
      }
      distances.at<float>(k) = sum;
    }
    double nearest = 0, farthest = 0, runnerUp = 0;
    cv::Point position;
    cv::minMaxLoc(distances, &nearest, &farthest, &position);
    distances.at<float>(position.x) = static_cast<float>(farthest);
    cv::minMaxLoc(distances, &runnerUp);
    if (nearest / runnerUp < 0.98) pairs.emplace_back(i, position.x);
  }
  return pairs;
}

}  // namespace jqstitching

void JQStitchingAlgorithm::CalacDistanceIndexFun(cv::Mat first, cv::Mat second,
                                                 std::vector<cv::Point>& pairs) {
  const std::vector<cv::Point> found = jqstitching::MatchDescriptors(first, second);
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

#include <cstddef>

#include "reference/algorithm.h"

namespace reference {

void Algorithm::CalacDistanceIndexFun(cv::Mat first, cv::Mat second,
                                      std::vector<cv::Point>& pairs) {
  if (first.rows == 0 || second.rows == 0) return;
  if (first.cols < second.cols) {
    CV_Error(cv::Error::StsUnmatchedSizes, "the first descriptors have fewer columns");
  }
  first.convertTo(first, CV_32F, 1.0, 0.0);
  second.convertTo(second, CV_32F, 1.0, 0.0);
  cv::Mat distance(1, first.rows, CV_32F);
  std::vector<cv::Point> found;
  for (int i = 0; i < second.rows; ++i) {
    for (int k = 0; k < first.rows; ++k) {
      float sum = 0.0f;
      for (int c = 0; c < second.cols; ++c) {
        const float difference = second.ptr<float>(i)[c] - first.ptr<float>(k)[c];
        sum += difference * difference;
      }
      distance.at<float>(0, k) = sum;
    }
    double nearest = 0.0;
    double farthest = 0.0;
    cv::Point position;
    cv::minMaxLoc(distance, &nearest, &farthest, &position);
    distance.at<float>(0, position.x) = static_cast<float>(farthest);
    double runnerUp = 0.0;
    cv::minMaxLoc(distance, &runnerUp);
    if (nearest / runnerUp < 0.98) found.push_back(cv::Point(i, position.x));
  }
  pairs.insert(pairs.end(), found.begin(), found.end());
}

void Algorithm::RoughMatchPoint(std::vector<cv::Point> cornersFirst,
                                std::vector<cv::Point> cornersSecond, std::vector<cv::Point> pairs,
                                std::vector<cv::Point>& matchedFirst,
                                std::vector<cv::Point>& matchedSecond) {
  // All pairs are looked up before the first one is written.
  std::vector<cv::Point> first, second;
  for (const cv::Point& pair : pairs) {
    first.push_back(cornersFirst.at(static_cast<std::size_t>(pair.y)));
    second.push_back(cornersSecond.at(static_cast<std::size_t>(pair.x)));
  }
  for (std::size_t k = 0; k < pairs.size(); ++k) {
    matchedFirst.push_back(first[k]);
    matchedSecond.push_back(second[k]);
  }
}

}  // namespace reference

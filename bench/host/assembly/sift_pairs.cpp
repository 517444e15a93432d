#include "host/assembly/sift_pairs.h"

#include <opencv2/features2d.hpp>
#include <opencv2/imgproc.hpp>

namespace jqbench {
namespace {

constexpr int kMostFeatures = 1000;
constexpr float kRatio = 0.75f;
constexpr double kAgreeing = 3;  // pixels
constexpr int kFewestMatches = 11;

struct Features {
  std::vector<cv::KeyPoint> keys;
  cv::Mat descriptors;
};

Features FindFeatures(const cv::Mat& frame) {
  cv::Mat grey;
  cv::cvtColor(frame, grey, cv::COLOR_BGR2GRAY);
  Features features;
  cv::SIFT::create(kMostFeatures)
      ->detectAndCompute(grey, cv::noArray(), features.keys, features.descriptors);
  return features;
}

// The shifts that single matches tell.
std::vector<cv::Point2d> MatchedShifts(const Features& first, const Features& second) {
  std::vector<cv::Point2d> shifts;
  if (first.keys.size() < 2 || second.keys.empty()) return shifts;
  std::vector<std::vector<cv::DMatch>> nearest;
  cv::BFMatcher(cv::NORM_L2).knnMatch(second.descriptors, first.descriptors, nearest, 2);
  for (const std::vector<cv::DMatch>& match : nearest) {
    if (match.size() < 2 || match[0].distance >= kRatio * match[1].distance) continue;
    const cv::Point2f from = first.keys[static_cast<std::size_t>(match[0].trainIdx)].pt;
    const cv::Point2f to = second.keys[static_cast<std::size_t>(match[0].queryIdx)].pt;
    shifts.emplace_back(from - to);
  }
  return shifts;
}

// The mean of the largest group that agrees with one of the shifts.
SiftPair Agree(const std::vector<cv::Point2d>& shifts) {
  SiftPair best;
  best.matched = static_cast<int>(shifts.size());
  for (const cv::Point2d& hypothesis : shifts) {
    cv::Point2d sum;
    int count = 0;
    for (const cv::Point2d& shift : shifts) {
      if (cv::norm(shift - hypothesis) > kAgreeing) continue;
      sum += shift;
      ++count;
    }
    if (count > best.matches) best.matches = count, best.shift = sum / count;
  }
  return best;
}

}  // namespace

std::vector<SiftPair> FindSiftPairs(const std::vector<cv::Mat>& frames) {
  std::vector<Features> features;
  for (const cv::Mat& frame : frames) features.push_back(FindFeatures(frame));
  std::vector<SiftPair> pairs;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    for (std::size_t j = i + 1; j < frames.size(); ++j) {
      SiftPair pair = Agree(MatchedShifts(features[i], features[j]));
      if (pair.matches < kFewestMatches) continue;
      pair.first = static_cast<int>(i);
      pair.second = static_cast<int>(j);
      pairs.push_back(pair);
    }
  }
  return pairs;
}

}  // namespace jqbench

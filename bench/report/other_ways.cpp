#include "report/other_ways.h"

#include <opencv2/calib3d.hpp>
#include <opencv2/features2d.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/stitching.hpp>

namespace jqbench {
namespace {

cv::Mat Grey(const cv::Mat& frame) {
  cv::Mat grey;
  cv::cvtColor(frame, grey, cv::COLOR_BGR2GRAY);
  return grey;
}

// How far an affine map moves the frame's middle.
cv::Point2d ShiftOfMiddle(const cv::Matx23d& map, cv::Size size) {
  const double x = 0.5 * size.width, y = 0.5 * size.height;
  return {map(0, 0) * x + map(0, 1) * y + map(0, 2) - x,
          map(1, 0) * x + map(1, 1) * y + map(1, 2) - y};
}

}  // namespace

std::optional<cv::Point2d> ByPhaseCorrelation(const cv::Mat& first, const cv::Mat& second) {
  cv::Mat a, b, window;
  Grey(first).convertTo(a, CV_32F);
  Grey(second).convertTo(b, CV_32F);
  cv::createHanningWindow(window, a.size(), CV_32F);
  return cv::phaseCorrelate(b, a, window);
}

std::optional<cv::Point2d> ByOrb(const cv::Mat& first, const cv::Mat& second) {
  const cv::Ptr<cv::ORB> orb = cv::ORB::create(500);
  std::vector<cv::KeyPoint> keysFirst, keysSecond;
  cv::Mat first32, second32;
  orb->detectAndCompute(Grey(first), cv::noArray(), keysFirst, first32);
  orb->detectAndCompute(Grey(second), cv::noArray(), keysSecond, second32);
  if (first32.empty() || second32.empty()) return std::nullopt;
  std::vector<cv::DMatch> matches;
  cv::BFMatcher(cv::NORM_HAMMING, true).match(second32, first32, matches);
  std::vector<cv::Point2f> from, to;
  for (const cv::DMatch& match : matches) {
    from.push_back(keysSecond[static_cast<size_t>(match.queryIdx)].pt);
    to.push_back(keysFirst[static_cast<size_t>(match.trainIdx)].pt);
  }
  if (from.size() < 3) return std::nullopt;
  const cv::Mat map = cv::estimateAffinePartial2D(from, to);
  if (map.empty()) return std::nullopt;
  return ShiftOfMiddle(cv::Matx23d(map), first.size());
}

std::optional<cv::Point2d> ByScanStitcher(const cv::Mat& first, const cv::Mat& second) {
  const cv::Ptr<cv::Stitcher> stitcher = cv::Stitcher::create(cv::Stitcher::SCANS);
  cv::Mat panorama;
  if (stitcher->stitch(std::vector<cv::Mat>{first, second}, panorama) != cv::Stitcher::OK) {
    return std::nullopt;
  }
  const std::vector<cv::detail::CameraParams> cameras = stitcher->cameras();
  if (cameras.size() != 2) return std::nullopt;
  // Maps of the picture's plane onto the frames at working scale.
  cv::Mat a, b;
  cameras[0].R.convertTo(a, CV_64F);
  cameras[1].R.convertTo(b, CV_64F);
  const cv::Mat map = a * b.inv();
  const double scale = stitcher->workScale();
  const cv::Matx23d scaled(map.at<double>(0, 0), map.at<double>(0, 1), map.at<double>(0, 2) / scale,
                           map.at<double>(1, 0), map.at<double>(1, 1),
                           map.at<double>(1, 2) / scale);
  return ShiftOfMiddle(scaled, first.size());
}

}  // namespace jqbench

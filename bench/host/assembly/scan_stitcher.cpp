#include "host/assembly/scan_stitcher.h"

#include <opencv2/stitching.hpp>

namespace jqbench {
namespace {

// Where the middle of a frame goes that a map of the working scale moves, as a way.
cv::Point2d WayOfMiddle(const cv::Mat& map, double workScale, cv::Size size) {
  const double x = 0.5 * size.width, y = 0.5 * size.height;
  const auto at = [&map](int row, int column) { return map.at<double>(row, column); };
  return {at(0, 0) * x + at(0, 1) * y + at(0, 2) / workScale - x,
          at(1, 0) * x + at(1, 1) * y + at(1, 2) / workScale - y};
}

cv::Mat InDoubles(const cv::Mat& map) {
  cv::Mat doubles;
  map.convertTo(doubles, CV_64F);
  return doubles;
}

}  // namespace

std::vector<std::optional<cv::Point2d>> PlaceByScanStitcher(const std::vector<cv::Mat>& frames) {
  std::vector<std::optional<cv::Point2d>> places(frames.size());
  const cv::Ptr<cv::Stitcher> stitcher = cv::Stitcher::create(cv::Stitcher::SCANS);
  cv::Mat panorama;
  try {
    if (stitcher->stitch(frames, panorama) != cv::Stitcher::OK) return places;
  } catch (const cv::Exception&) {
    return places;  // it gives up on some sets of frames in this way
  }
  const std::vector<int> kept = stitcher->component();
  const std::vector<cv::detail::CameraParams> cameras = stitcher->cameras();
  for (std::size_t i = 0; i < kept.size() && i < cameras.size(); ++i) {
    const auto frame = static_cast<std::size_t>(kept[i]);
    // The maps carry the picture's plane onto the frames.
    const cv::Mat map = InDoubles(cameras[0].R) * InDoubles(cameras[i].R).inv();
    places[frame] = WayOfMiddle(map, stitcher->workScale(), frames[frame].size());
  }
  return places;
}

}  // namespace jqbench

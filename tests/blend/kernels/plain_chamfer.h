#ifndef JQ_TESTS_BLEND_PLAIN_CHAMFER_H
#define JQ_TESTS_BLEND_PLAIN_CHAMFER_H

#include <algorithm>
#include <opencv2/core.hpp>

/// The two raster passes over a `CV_32F` map of 0 and 255, one pixel after the
/// other.
inline void PlainChamfer(cv::Mat& map) {
  const int last = map.cols - 1;
  const auto lower = [&map](int r, int c, int fromRow, int fromCol, float step) {
    if (fromCol < 0 || fromCol >= map.cols) return;
    float& d = map.at<float>(r, c);
    d = std::min(d, map.at<float>(fromRow, fromCol) + step);
  };
  const auto border = [&](int r, int c, int from) {
    lower(r, c, from, c, 0.2f);
    lower(r, c, from, c == 0 ? 1 : c - 1, 0.3f);
  };
  const auto interior = [&](int r, int c, int from, int back) {
    lower(r, c, r, c + back, 0.2f);
    lower(r, c, from, c - 1, 0.3f);
    lower(r, c, from, c, 0.2f);
    lower(r, c, from, c + 1, 0.3f);
  };
  for (int r = 1; r < map.rows; ++r) {
    border(r, 0, r - 1);
    border(r, last, r - 1);
    lower(r, last, r, last - 1, 0.3f);
    for (int c = 1; c < last; ++c) interior(r, c, r - 1, -1);
  }
  for (int r = map.rows - 2; r >= 0; --r) {
    border(r, last, r + 1);
    for (int c = last - 1; c >= 1; --c) {
      if (map.at<float>(r, c) != 0.0f) interior(r, c, r + 1, 1);
    }
    border(r, 0, r + 1);
  }
}

#endif  // JQ_TESTS_BLEND_PLAIN_CHAMFER_H

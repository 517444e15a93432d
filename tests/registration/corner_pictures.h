#ifndef JQ_TESTS_REGISTRATION_CORNER_PICTURES_H
#define JQ_TESTS_REGISTRATION_CORNER_PICTURES_H

#include <opencv2/imgproc.hpp>
#include <vector>

/// A ramp along the columns with a bright bar across it. Every column sees the
/// same gradients, so all responses of one row are equal to the last bit. With 41
/// rows the row 20 is the only one that can hold corners, and it holds one in
/// every column 20 to cols - 21.
inline cv::Mat RampWithBar(int rows, int cols) {
  cv::Mat picture(rows, cols, CV_8UC1);
  for (int r = 0; r < rows; ++r) {
    const int bar = r == rows / 2 ? 40 : 0;
    for (int c = 0; c < cols; ++c) {
      picture.at<unsigned char>(r, c) = static_cast<unsigned char>(2 * c + bar);
    }
  }
  return picture;
}

inline std::vector<cv::Point> ColumnsOfRow20(int cols) {
  std::vector<cv::Point> points;
  for (int c = 20; c <= cols - 21; ++c) points.push_back(cv::Point(c, 20));
  return points;
}

/// Every pixel twice in both directions: halving gives back the picture exactly.
inline cv::Mat Doubled(const cv::Mat& picture) {
  cv::Mat doubled;
  cv::resize(picture, doubled, picture.size() * 2, 0, 0, cv::INTER_NEAREST);
  return doubled;
}

#endif  // JQ_TESTS_REGISTRATION_CORNER_PICTURES_H

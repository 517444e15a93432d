#ifndef JQHOST_TESTS_OUTPUT_MOSAIC_SCENE_H
#define JQHOST_TESTS_OUTPUT_MOSAIC_SCENE_H

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

namespace jqhost_test {

/// Something like a mosaic: texture, black holes, and pixels that are black in some
/// samples only. A part of a larger matrix, so that its rows do not follow each other.
inline cv::Mat MosaicScene(cv::Size size, std::uint64_t seed) {
  cv::RNG random(seed);
  cv::Mat large(size.height + 9, size.width + 7, CV_8UC3);
  random.fill(large, cv::RNG::UNIFORM, 0, 256);
  cv::Mat view = large(cv::Rect(cv::Point(5, 3), size));
  const cv::Rect hole(size.width / 3, size.height / 4, size.width / 3, size.height / 3);
  view(hole).setTo(cv::Scalar::all(0));
  view(cv::Rect(0, 0, size.width / 4, size.height / 5)).setTo(cv::Scalar::all(0));
  for (int i = 0; i < 200; ++i) {
    const cv::Point at(random.uniform(0, size.width), random.uniform(0, size.height));
    view.at<cv::Vec3b>(at) = cv::Vec3b(0, 0, static_cast<unsigned char>(random.uniform(0, 2)));
  }
  return view;
}

/// The next smaller level by its plain definition: the mean of 2 x 2 pixels, rounded
/// half up. An odd last row or column counts twice.
inline cv::Mat HalfByMean(const cv::Mat& from) {
  cv::Mat to((from.rows + 1) / 2, (from.cols + 1) / 2, from.type());
  const int channels = from.channels();
  for (int r = 0; r < to.rows; ++r) {
    for (int c = 0; c < to.cols; ++c) {
      const int rows[2] = {2 * r, std::min(2 * r + 1, from.rows - 1)};
      const int columns[2] = {2 * c, std::min(2 * c + 1, from.cols - 1)};
      for (int k = 0; k < channels; ++k) {
        int sum = 0;
        for (const int y : rows) {
          for (const int x : columns) sum += from.ptr(y)[x * channels + k];
        }
        to.ptr(r)[c * channels + k] = static_cast<unsigned char>((sum + 2) / 4);
      }
    }
  }
  return to;
}

/// How many samples differ; -1 when the matrices are not of one size and type.
inline long long Differences(const cv::Mat& a, const cv::Mat& b) {
  if (a.size() != b.size() || a.type() != b.type()) return -1;
  cv::Mat different;
  cv::compare(a.reshape(1), b.reshape(1), different, cv::CMP_NE);
  return cv::countNonZero(different);
}

}  // namespace jqhost_test

#endif  // JQHOST_TESTS_OUTPUT_MOSAIC_SCENE_H

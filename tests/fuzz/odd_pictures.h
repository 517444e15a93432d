#ifndef JQ_TESTS_FUZZ_ODD_PICTURES_H
#define JQ_TESTS_FUZZ_ODD_PICTURES_H

#include <memory>
#include <opencv2/core.hpp>
#include <vector>

#include "fuzz_input.h"

/// Makes matrices of any kind from an input: pictures with corners, empty ones, odd
/// types and sizes, views, three dimensions. Their pixels lie in heap blocks of exactly
/// their size, so that a sample read too many shows, and live as long as this object.
class OddPictures {
 public:
  explicit OddPictures(FuzzInput& in) : m_in(in) {}

  /// Often of the size and type of the last one.
  cv::Mat next();
  /// 8-bit, 1 or 3 channels, large enough for corners more often than not.
  cv::Mat picture();
  /// Rows of 200 numbers as descriptors are, or anything else.
  cv::Mat descriptors();
  std::vector<cv::Point> points();

 private:
  cv::Mat make(int rows, int cols, int type);
  void fill(cv::Mat& matrix);

  FuzzInput& m_in;
  std::vector<std::unique_ptr<unsigned char[]>> m_blocks;
  cv::Size m_lastSize{100, 90};
  int m_lastType = CV_8UC3;
};

#endif  // JQ_TESTS_FUZZ_ODD_PICTURES_H

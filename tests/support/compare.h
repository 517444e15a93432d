#ifndef JQ_TESTS_SUPPORT_COMPARE_H
#define JQ_TESTS_SUPPORT_COMPARE_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <opencv2/core.hpp>
#include <vector>

#include "jqstitchingalgorithm.h"

/// Equal type, size and bytes; else the first differing sample.
inline ::testing::AssertionResult SameMatrix(const cv::Mat& actual, const cv::Mat& expected) {
  if (actual.type() != expected.type() || actual.size() != expected.size()) {
    return ::testing::AssertionFailure()
           << "type " << actual.type() << ", " << actual.rows << " rows x " << actual.cols
           << " columns instead of type " << expected.type() << ", " << expected.rows << " x "
           << expected.cols;
  }
  const std::size_t sample = actual.elemSize1();
  for (int r = 0; r < actual.rows; ++r) {
    for (std::size_t k = 0; k < static_cast<std::size_t>(actual.cols) * actual.channels(); ++k) {
      const unsigned char* a = actual.ptr(r) + k * sample;
      const unsigned char* e = expected.ptr(r) + k * sample;
      if (std::memcmp(a, e, sample) == 0) continue;
      const cv::Mat one(1, 1, actual.depth(), const_cast<unsigned char*>(a));
      const cv::Mat two(1, 1, actual.depth(), const_cast<unsigned char*>(e));
      cv::Mat found;
      cv::Mat wanted;
      one.convertTo(found, CV_64F);
      two.convertTo(wanted, CV_64F);
      return ::testing::AssertionFailure()
             << "first mismatch at row " << r << ", column " << k / actual.channels()
             << ", channel " << k % actual.channels() << " of " << actual.rows << " rows x "
             << actual.cols << " columns: " << found.at<double>(0) << " instead of "
             << wanted.at<double>(0);
    }
  }
  return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult SamePoints(const std::vector<cv::Point>& actual,
                                             const std::vector<cv::Point>& expected) {
  for (std::size_t k = 0; k < actual.size() && k < expected.size(); ++k) {
    if (actual[k] != expected[k]) {
      return ::testing::AssertionFailure()
             << "first mismatch at point " << k << " of " << actual.size() << ": " << actual[k]
             << " instead of " << expected[k];
    }
  }
  if (actual.size() != expected.size()) {
    return ::testing::AssertionFailure()
           << actual.size() << " points instead of " << expected.size();
  }
  return ::testing::AssertionSuccess();
}

/// Bit for bit: tells 0 from -0, and a NaN equals itself only as a NaN.
inline ::testing::AssertionResult SameFloat(float actual, float expected) {
  const bool bothNan = actual != actual && expected != expected;
  if (bothNan || std::memcmp(&actual, &expected, sizeof actual) == 0) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << actual << " instead of " << expected;
}

inline bool operator==(const stitchflags& a, const stitchflags& b) {
  return a.matchCount == b.matchCount && a.offsetX == b.offsetX && a.offsetY == b.offsetY &&
         a.positionX == b.positionX && a.positionY == b.positionY && a.overlapFlag == b.overlapFlag;
}

inline void PrintTo(const stitchflags& f, std::ostream* out) {
  *out << "{matchCount " << f.matchCount << ", offset (" << f.offsetX << ", " << f.offsetY
       << "), position (" << f.positionX << ", " << f.positionY << "), overlapFlag "
       << f.overlapFlag << "}";
}

#endif  // JQ_TESTS_SUPPORT_COMPARE_H

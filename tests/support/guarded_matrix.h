#ifndef JQ_TESTS_SUPPORT_GUARDED_MATRIX_H
#define JQ_TESTS_SUPPORT_GUARDED_MATRIX_H

#include <gtest/gtest.h>

#include <opencv2/core.hpp>

#include "support/pictures.h"

/// A picture as a view into the middle of a larger matrix, with known bytes all
/// round it: rows are padded, and a write outside the rectangle is found.
class GuardedMatrix {
 public:
  GuardedMatrix() = default;
  /// With margins of 0 the view is the whole matrix and continuous.
  GuardedMatrix(RandomSource& random, const cv::Mat& picture) {
    const int margin = random.OneIn(2) ? 17 : 0;
    m_frame = cv::Rect{random.Int(0, margin), random.Int(0, margin), picture.cols, picture.rows};
    m_whole = pictures::Noise(
        random,
        cv::Size{m_frame.br().x + random.Int(0, margin), m_frame.br().y + random.Int(0, margin)},
        picture.type());
    picture.copyTo(m_whole(m_frame));
    m_before = m_whole.clone();
  }
  /// A second one with the same bytes in the same places.
  GuardedMatrix Twin() const {
    GuardedMatrix twin;
    twin.m_frame = m_frame;
    twin.m_whole = m_whole.clone();
    twin.m_before = m_whole.clone();
    return twin;
  }
  /// A fresh header on the picture.
  cv::Mat View() const {
    return m_frame.size() == m_whole.size() ? cv::Mat(m_whole) : m_whole(m_frame);
  }
  ::testing::AssertionResult GuardsIntact() const { return Compare(false); }
  ::testing::AssertionResult Untouched() const { return Compare(true); }

 private:
  ::testing::AssertionResult Compare(bool insideToo) const {
    const std::size_t pixel = m_whole.elemSize();
    for (int r = 0; r < m_whole.rows; ++r) {
      for (std::size_t k = 0; k < m_whole.cols * pixel; ++k) {
        const int c = static_cast<int>(k / pixel);
        if (!insideToo && m_frame.contains(cv::Point(c, r))) continue;
        if (m_whole.ptr(r)[k] != m_before.ptr(r)[k]) {
          return ::testing::AssertionFailure()
                 << "byte changed at row " << r - m_frame.y << ", column " << c - m_frame.x
                 << " of a picture of " << m_frame.height << " rows x " << m_frame.width
                 << " columns";
        }
      }
    }
    return ::testing::AssertionSuccess();
  }

  cv::Mat m_whole;
  cv::Mat m_before;
  cv::Rect m_frame;
};

#endif  // JQ_TESTS_SUPPORT_GUARDED_MATRIX_H

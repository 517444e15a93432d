#include "odd_pictures.h"

#include <algorithm>

cv::Mat OddPictures::make(int rows, int cols, int type) {
  const std::size_t bytes = static_cast<std::size_t>(rows) * cols * CV_ELEM_SIZE(type);
  if (bytes == 0) return cv::Mat(rows, cols, type);
  m_blocks.emplace_back(new unsigned char[bytes]);
  cv::Mat matrix(rows, cols, type, m_blocks.back().get());
  fill(matrix);
  m_lastSize = matrix.size();
  m_lastType = type;
  return matrix;
}

// Flat, bytes at random, or soft blobs with an edge here and there. A seed of its own
// for each matrix, or the same again, so that two can show the same thing.
void OddPictures::fill(cv::Mat& matrix) {
  const int kind = m_in.u8();
  std::uint32_t state = kind & 1 ? 1u : m_in.u8() + 2u;
  const int shift = m_in.u8() % 32;
  const std::size_t row = static_cast<std::size_t>(matrix.cols) * matrix.elemSize();
  for (int r = 0; r < matrix.rows; ++r) {
    unsigned char* p = matrix.ptr(r);
    for (std::size_t k = 0; k < row; ++k) {
      if (kind < 32) {
        p[k] = static_cast<unsigned char>(shift * 8);
      } else if (kind < 96) {
        state = state * 1664525u + 1013904223u;
        p[k] = static_cast<unsigned char>(state >> 24);
      } else {
        // One grey value for each cell of a grid that is moved by the shift.
        const std::size_t column = k / matrix.elemSize() + static_cast<std::size_t>(shift);
        const std::uint32_t cell = static_cast<std::uint32_t>(r / 7 * 131 + column / 7) + state;
        p[k] = static_cast<unsigned char>((cell * 2654435761u) >> 24);
      }
    }
  }
}

cv::Mat OddPictures::picture() {
  const int type = m_in.oneIn(3) ? CV_8UC1 : CV_8UC3;
  if (m_in.oneIn(2)) return make(m_lastSize.height, m_lastSize.width, type);
  return make(m_in.range(60, 110), m_in.range(60, 110), type);
}

cv::Mat OddPictures::next() {
  const int cube[] = {2, m_in.range(1, 5), 3};
  switch (m_in.u8() % 16) {
    case 0:
      return cv::Mat();
    case 1:
      return cv::Mat(3, cube, CV_MAKETYPE(m_in.u8() % 7, 1 + m_in.u8() % 4), cv::Scalar::all(5));
    case 2:
      return cv::Mat(m_in.u8() % 3, 0, CV_8UC3);
    case 3:
    case 4:
      return make(m_in.range(1, 20), m_in.range(1, 20),
                  CV_MAKETYPE(m_in.u8() % 8, 1 + m_in.u8() % 6));
    case 5:
      return make(m_in.range(1, 130), m_in.range(1, 130), m_lastType);
    case 6:
    case 7: {
      cv::Mat whole = make(m_in.range(3, 130), m_in.range(3, 130),
                           m_in.oneIn(4)   ? CV_8UC4
                           : m_in.oneIn(2) ? CV_8UC1
                                           : CV_8UC3);
      const int x = m_in.u8() % whole.cols, y = m_in.u8() % whole.rows;
      return whole(cv::Rect(x, y, whole.cols - x, whole.rows - y));
    }
    case 8:
    case 9:
    case 10:
    case 11:
      return make(m_lastSize.height, m_lastSize.width, m_lastType);
    default:
      return picture();
  }
}

cv::Mat OddPictures::descriptors() {
  if (m_in.oneIn(6)) return next();
  const int cols = m_in.oneIn(6) ? m_in.range(1, 260) : 200;
  return make(m_in.range(1, 40), cols, m_in.oneIn(8) ? CV_8UC1 : CV_16UC1);
}

std::vector<cv::Point> OddPictures::points() {
  std::vector<cv::Point> list;
  const bool near = m_in.oneIn(2);
  for (int n = m_in.u8() % 24; n > 0; --n) {
    if (near) {
      const int x = m_in.u8(), y = m_in.u8();
      list.emplace_back(x, y);
    } else {
      const int x = m_in.number(), y = m_in.number();
      list.emplace_back(x, y);
    }
  }
  return list;
}

#ifndef JQ_TESTS_BLEND_BLACK_PATTERNS_H
#define JQ_TESTS_BLEND_BLACK_PATTERNS_H

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "support/pictures.h"

/// Puts empty pixels into a picture in one of the ways that distances depend on.
namespace black_patterns {

constexpr int kCount = 10;

inline void Put(RandomSource& random, int pattern, cv::Mat& picture) {
  const int rows = picture.rows;
  const int cols = picture.cols;
  const cv::Scalar black = cv::Scalar::all(0);
  switch (pattern) {
    case 1:  // nothing left
      picture.setTo(black);
      return;
    case 2: {  // content in one corner: an empty L
      const int r = random.Int(0, rows);
      const int c = random.Int(0, cols);
      const bool top = random.OneIn(2);
      const bool left = random.OneIn(2);
      if (r > 0) picture.rowRange(top ? 0 : rows - r, top ? r : rows).setTo(black);
      if (c > 0) picture.colRange(left ? 0 : cols - c, left ? c : cols).setTo(black);
      return;
    }
    case 3:  // boxes
      pictures::BlackHoles(random, picture);
      return;
    case 4:  // specks
      for (int n = random.Int(1, 8); n > 0; --n) {
        const cv::Point at{random.Int(0, cols - 1), random.Int(0, rows - 1)};
        picture(cv::Rect(at, cv::Size(1, 1))).setTo(black);
      }
      return;
    case 5:  // checkerboard
      for (int r = 0; r < rows; ++r) {
        for (int c = r % 2; c < cols; c += 2) picture(cv::Rect(c, r, 1, 1)).setTo(black);
      }
      return;
    case 6:  // a slanted edge: the way runs along the rows nowhere and everywhere
    case 7: {
      const int rise = random.Int(1, 5);
      const int run = random.Int(1, 5);
      for (int r = 0; r < rows; ++r) {
        const int end = std::min(cols, r * run / rise);
        const int start = pattern == 6 ? 0 : cols - end;
        if (end > 0) picture(cv::Rect(start, r, end, 1)).setTo(black);
      }
      return;
    }
    case 8:  // steps, as overlapping frames leave them
      for (int r = 0, end = 0; r < rows; ++r) {
        if (random.OneIn(6)) end = random.Int(0, cols);
        if (end > 0) picture(cv::Rect(0, r, end, 1)).setTo(black);
      }
      return;
    case 9:  // dark samples, some of which are empty colours
      cv::Mat(pictures::Noise(random, rows, cols, picture.type(), 0, random.Int(1, 6)))
          .copyTo(picture);
      return;
    default:  // no empty pixel
      return;
  }
}

/// A picture of random content with a random pattern.
inline cv::Mat Picture(RandomSource& random, int rows, int cols, int type) {
  cv::Mat picture = pictures::Noise(random, rows, cols, type, random.OneIn(2) ? 2 : 250, 255);
  Put(random, random.Int(0, kCount - 1), picture);
  return picture;
}

inline cv::Mat Picture(RandomSource& random, cv::Size size, int type) {
  return Picture(random, size.height, size.width, type);
}

}  // namespace black_patterns

#endif  // JQ_TESTS_BLEND_BLACK_PATTERNS_H

#ifndef JQ_TESTS_SUPPORT_PICTURES_H
#define JQ_TESTS_SUPPORT_PICTURES_H

#include <opencv2/imgproc.hpp>
#include <string>

#include "support/random_source.h"

/// Generated test pictures; `type` is CV_8UC1 to CV_8UC4.
namespace pictures {

inline cv::Mat Flat(int rows, int cols, int type, int value) {
  return cv::Mat(rows, cols, type, cv::Scalar::all(value));
}

inline cv::Mat Noise(RandomSource& random, int rows, int cols, int type, int low = 0,
                     int high = 255) {
  cv::Mat picture(rows, cols, type);
  for (int r = 0; r < rows; ++r) {
    unsigned char* row = picture.ptr(r);
    for (int k = 0; k < cols * picture.channels(); ++k) {
      row[k] = static_cast<unsigned char>(random.Int(low, high));
    }
  }
  return picture;
}

inline cv::Mat Noise(RandomSource& random, cv::Size size, int type, int low = 0, int high = 255) {
  return Noise(random, size.height, size.width, type, low, high);
}

/// Smoothed noise with lines, discs and boxes on it: many distinct corners.
/// No sample is 0.
inline cv::Mat Texture(RandomSource& random, int rows, int cols, int type) {
  cv::Mat picture = Noise(random, rows, cols, type);
  cv::GaussianBlur(picture, picture, cv::Size(5, 5), 1.5);
  const int shapes = 4 + rows * cols / 900;
  for (int s = 0; s < shapes; ++s) {
    cv::Scalar colour;
    for (int k = 0; k < 4; ++k) colour[k] = random.Int(1, 255);
    const cv::Point at{random.Int(0, cols - 1), random.Int(0, rows - 1)};
    switch (random.Int(0, 2)) {
      case 0:
        cv::circle(picture, at, random.Int(1, 12), colour, cv::FILLED);
        break;
      case 1:
        cv::rectangle(picture, cv::Rect{at.x, at.y, random.Int(2, 20), random.Int(2, 20)}, colour,
                      cv::FILLED);
        break;
      default: {
        const cv::Point way{random.Int(-20, 20), random.Int(-20, 20)};
        cv::line(picture, at, at + way, colour, random.Int(1, 3));
      }
    }
  }
  return cv::max(picture, 1);
}

inline cv::Mat Texture(RandomSource& random, cv::Size size, int type) {
  return Texture(random, size.height, size.width, type);
}

inline void BlackHoles(RandomSource& random, cv::Mat& picture) {
  for (int n = random.Int(1, 5); n > 0; --n) {
    const cv::Rect hole{random.Int(-5, picture.cols), random.Int(-5, picture.rows),
                        random.Int(1, 1 + picture.cols / 2), random.Int(1, 1 + picture.rows / 2)};
    cv::rectangle(picture, hole, cv::Scalar::all(0), cv::FILLED);
  }
}

/// A picture of a random kind, extremes included.
inline cv::Mat Any(RandomSource& random, int rows, int cols, int type) {
  switch (random.Int(0, 9)) {
    case 0:
      return Flat(rows, cols, type, 0);
    case 1:
      return Flat(rows, cols, type, 255);
    case 2:
      return Flat(rows, cols, type, random.Int(0, 255));
    case 3:
      return Noise(random, rows, cols, type);
    case 4:
      return Noise(random, rows, cols, type, 0, random.Int(1, 3));
    case 5: {  // black and white only
      cv::Mat picture = Noise(random, rows, cols, type);
      return picture > random.Int(0, 254);
    }
    case 6: {  // mostly black
      cv::Mat picture = Noise(random, rows, cols, type);
      const cv::Mat mask = Noise(random, rows, cols, CV_8UC1) < 240;
      picture.setTo(cv::Scalar::all(0), mask);
      return picture;
    }
    case 7: {
      cv::Mat picture = Texture(random, rows, cols, type);
      BlackHoles(random, picture);
      return picture;
    }
    default:
      return Texture(random, rows, cols, type);
  }
}

inline cv::Mat Any(RandomSource& random, cv::Size size, int type) {
  return Any(random, size.height, size.width, type);
}

}  // namespace pictures

#endif  // JQ_TESTS_SUPPORT_PICTURES_H

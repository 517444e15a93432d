#include <cmath>
#include <cstddef>
#include <cstdint>

#include "reference/algorithm.h"

namespace reference {
namespace {

// The 16-bit samples of an image, row after row without padding. A multi-channel
// image is read as if its samples were one channel wide.
class Samples {
 public:
  explicit Samples(const cv::Mat& image) : m_cols(image.cols), m_rows(image.rows) {
    image.convertTo(m_data, CV_16U, 1.0, 0.0);
    if (!m_data.empty()) m_data = m_data.clone();
    m_rowLength = static_cast<std::size_t>(m_cols) * image.channels();
  }
  std::int64_t cols() const { return m_cols; }
  std::int64_t rows() const { return m_rows; }
  // One sample past a row's end is the first of the next row; a row below the
  // last one reads as 0.
  int At(std::int64_t r, std::int64_t c) const {
    if (r >= m_rows) return 0;
    const std::size_t index = static_cast<std::size_t>(r) * m_rowLength + c;
    return reinterpret_cast<const std::uint16_t*>(m_data.data)[index];
  }

 private:
  cv::Mat m_data;
  int m_cols;
  int m_rows;
  std::size_t m_rowLength;
};

float AngleDegrees(float gx, float gy) {
  if (gx == 0.0f) return gy > 0.0f ? 90.0f : gy < 0.0f ? 270.0f : 0.0f;
  const float half = std::atan(std::fabs(gy / gx)) * 0.5f;
  const float a = static_cast<float>(std::floor(static_cast<double>(half) / CV_PI * 360.0));
  if (gx > 0.0f && gy > 0.0f) return a;
  if (gx < 0.0f && gy > 0.0f) return 180.0f - a;
  if (gx < 0.0f) return 180.0f + a;
  const float angle = 360.0f - a;
  return angle == 360.0f ? 0.0f : angle;
}

void AddPixel(const Samples& image, std::int64_t r, std::int64_t c, std::uint16_t* bins) {
  float gx = 0.0f;
  float gy = 0.0f;
  if (c >= 2 && r >= 2 && c < image.cols() - 1 && r < image.rows() - 1) {
    gx = static_cast<float>(image.At(r, c + 2) - image.At(r, c - 2));
    gy = static_cast<float>(image.At(r + 2, c) - image.At(r - 2, c));
  }
  const float magnitude = static_cast<float>(static_cast<int>(std::sqrt(gx * gx + gy * gy)));
  const int bin = static_cast<int>(std::floor(AngleDegrees(gx, gy) / 45.0f));
  bins[bin] =
      static_cast<std::uint16_t>(static_cast<int>(static_cast<float>(bins[bin]) + magnitude));
}

}  // namespace

void Algorithm::NoRotaFeatureDescriber(cv::Mat image, std::vector<cv::Point> corners,
                                       cv::Mat& descriptors) {
  const Samples samples(image);
  cv::Mat result(cv::Mat::zeros(static_cast<int>(corners.size()), 200, CV_16U));
  for (std::size_t k = 0; k < corners.size(); ++k) {
    int block = 0;
    for (int anchorX = -9; anchorX <= 7; anchorX += 4) {
      for (int anchorY = -9; anchorY <= 7; anchorY += 4, ++block) {
        std::uint16_t bins[8] = {};
        for (int dx = anchorX - 1; dx <= anchorX + 2; ++dx) {
          for (int dy = anchorY - 1; dy <= anchorY + 2; ++dy) {
            AddPixel(samples, static_cast<std::int64_t>(corners[k].y) + dy,
                     static_cast<std::int64_t>(corners[k].x) + dx, bins);
          }
        }
        for (int o = 0; o < 8; ++o) {
          result.at<std::uint16_t>(static_cast<int>(k), 8 * block + o) = bins[o];
        }
      }
    }
  }
  descriptors = result;
}

}  // namespace reference

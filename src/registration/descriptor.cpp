#include "registration/descriptor.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "jqstitchingalgorithm.h"

namespace jqstitching {
namespace {

// Angle of a gradient in whole degrees, y pointing down.
int Angle(int gx, int gy) {
  if (gx == 0) return gy > 0 ? 90 : gy < 0 ? 270 : 0;
  const float slope = std::fabs(static_cast<float>(gy) / static_cast<float>(gx));
  const float half = std::atan(slope) * 0.5f;
  const int a = static_cast<int>(std::floor(static_cast<double>(half) / CV_PI * 360.0));
  if (gx > 0 && gy > 0) return a;
  if (gy > 0) return 180 - a;
  if (gx < 0) return 180 + a;
  return a == 0 ? 0 : 360 - a;
}

class Samples {
 public:
  explicit Samples(const cv::Mat& grey)
      : m_grey(grey), m_perRow(static_cast<size_t>(grey.cols) * grey.channels()) {}

  // The rows follow each other without a gap: a sample past a row's end is the
  // first of the next row. The row below the last one reads 0.
  int at(int row, int col) const {
    size_t r = static_cast<size_t>(row), c = static_cast<size_t>(col);
    if (c >= m_perRow) {
      ++r;
      c -= m_perRow;
    }
    return r < static_cast<size_t>(m_grey.rows) ? m_grey.ptr(static_cast<int>(r))[c] : 0;
  }

 private:
  const cv::Mat& m_grey;
  size_t m_perRow;
};

}  // namespace

cv::Mat DescribeCorners(const cv::Mat& grey, const std::vector<cv::Point>& corners) {
  cv::Mat descriptors = cv::Mat::zeros(static_cast<int>(corners.size()), 200, CV_16U);
  const Samples image(grey);
  for (size_t k = 0; k < corners.size(); ++k) {
    auto* bins = descriptors.ptr<std::uint16_t>(static_cast<int>(k));
    for (int i = 0; i < 5; ++i) {
      for (int j = 0; j < 5; ++j, bins += 8) {
        for (int dc = 0; dc < 4; ++dc) {
          for (int dr = 0; dr < 4; ++dr) {
            // 64 bits: a corner far outside the image must not wrap into it.
            const std::int64_t col = std::int64_t{corners[k].x} - 10 + 4 * i + dc;
            const std::int64_t row = std::int64_t{corners[k].y} - 10 + 4 * j + dr;
            if (col < 2 || row < 2 || col >= grey.cols - 1 || row >= grey.rows - 1) continue;
            const int c = static_cast<int>(col), r = static_cast<int>(row);
            const int gx = image.at(r, c + 2) - image.at(r, c - 2);
            const int gy = image.at(r + 2, c) - image.at(r - 2, c);
            const auto magnitude =
                static_cast<int>(std::sqrt(static_cast<float>(gx * gx + gy * gy)));
            bins[Angle(gx, gy) / 45] += static_cast<std::uint16_t>(magnitude);
          }
        }
      }
    }
  }
  return descriptors;
}

}  // namespace jqstitching

void JQStitchingAlgorithm::NoRotaFeatureDescriber(cv::Mat image, std::vector<cv::Point> corners,
                                                  cv::Mat& descriptors) {
  descriptors = jqstitching::DescribeCorners(image, corners);
}

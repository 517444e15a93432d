#include "registration/kernels/descriptor.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace jqstitching {
namespace {

// Corner - kBefore is the patch's first column and row.
constexpr int kBefore = 10, kPatch = 20, kBlock = 4, kBlocks = kPatch / kBlock, kBins = 8;
// A gradient spans this many pixels on each side.
constexpr int kSpan = 2;

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

// Orientation bin and magnitude of every gradient, at [gy + 256][gx + 256].
class GradientTable {
 public:
  GradientTable() : m_entries(static_cast<size_t>(kSide) * kSide) {
    for (int y = 1 - kZero; y < kZero; ++y) {
      for (int x = 1 - kZero; x < kZero; ++x) {
        const auto magnitude = static_cast<int>(std::sqrt(static_cast<float>(x * x + y * y)));
        entry(x, y) = static_cast<std::uint16_t>(magnitude * kBins + Angle(x, y) / 45);
      }
    }
  }

  void add(int gx, int gy, std::uint16_t* bins) const {
    const unsigned value = m_entries[Index(gx, gy)];
    const unsigned o = value % kBins;
    bins[o] = static_cast<std::uint16_t>(bins[o] + value / kBins);
  }

 private:
  static constexpr int kZero = 256, kSide = 2 * kZero;
  static size_t Index(int x, int y) {
    return static_cast<size_t>(y + kZero) * kSide + static_cast<size_t>(x + kZero);
  }
  std::uint16_t& entry(int x, int y) { return m_entries[Index(x, y)]; }
  std::vector<std::uint16_t> m_entries;
};

const GradientTable& Gradients() {
  static const GradientTable table;
  return table;
}

// The rows follow each other without a gap: a sample past a row's end is the
// first of the next row. The row below the last one reads 0.
int Sample(const cv::Mat& grey, int row, int col) {
  const int perRow = grey.cols * grey.channels();
  if (col >= perRow) {
    ++row;
    col -= perRow;
  }
  return row < grey.rows ? grey.ptr(row)[col] : 0;
}

// A patch that may reach over the border: pixels outside the valid band, which
// guards two pixels on the low sides and one on the high sides, add nothing.
void DescribeAtBorder(const cv::Mat& grey, const cv::Point& corner, std::uint16_t* bins) {
  for (int i = 0; i < kPatch; ++i) {
    for (int j = 0; j < kPatch; ++j) {
      // 64 bits: a corner far outside the image must not wrap into it.
      const std::int64_t col = std::int64_t{corner.x} - kBefore + i;
      const std::int64_t row = std::int64_t{corner.y} - kBefore + j;
      if (col < kSpan || row < kSpan || col >= grey.cols - 1 || row >= grey.rows - 1) continue;
      const int c = static_cast<int>(col), r = static_cast<int>(row);
      const int gx = Sample(grey, r, c + kSpan) - Sample(grey, r, c - kSpan);
      const int gy = Sample(grey, r + kSpan, c) - Sample(grey, r - kSpan, c);
      Gradients().add(gx, gy, bins + kBins * (kBlocks * (i / kBlock) + j / kBlock));
    }
  }
}

// Every pixel of the patch and its neighbours lie inside the image.
bool IsInside(const cv::Mat& grey, const cv::Point& corner) {
  constexpr int low = kBefore + kSpan, high = kPatch - kBefore + kSpan;
  return corner.x >= low && corner.y >= low && corner.x <= grey.cols - high &&
         corner.y <= grey.rows - high;
}

void DescribeInside(const cv::Mat& grey, const cv::Point& corner, const GradientTable& gradients,
                    std::uint16_t* bins) {
  const size_t step = grey.step[0];
  const unsigned char* first = grey.ptr(corner.y - kBefore) + (corner.x - kBefore);
  for (int j = 0; j < kPatch; ++j) {
    const unsigned char* row = first + static_cast<size_t>(j) * step;
    const unsigned char* above = row - kSpan * step;
    const unsigned char* below = row + kSpan * step;
    std::uint16_t* block = bins + kBins * (j / kBlock);
    // One pixel of each block in turn, so that neighbouring sums do not wait for
    // each other.
    for (int c = 0; c < kBlock; ++c) {
      for (int i = 0; i < kBlocks; ++i) {
        const int p = i * kBlock + c;
        gradients.add(row[p + kSpan] - row[p - kSpan], below[p] - above[p],
                      block + kBins * kBlocks * i);
      }
    }
  }
}

}  // namespace

cv::Mat DescribeCorners(const cv::Mat& grey, const std::vector<cv::Point>& corners) {
  if (grey.depth() != CV_8U) {
    CV_Error(cv::Error::StsUnsupportedFormat,
             cv::format("descriptors need an 8-bit image, not type %d", grey.type()));
  }
  cv::Mat descriptors =
      cv::Mat::zeros(static_cast<int>(corners.size()), kBlocks * kBlocks * kBins, CV_16U);
  const GradientTable& gradients = Gradients();
  for (size_t k = 0; k < corners.size(); ++k) {
    auto* bins = descriptors.ptr<std::uint16_t>(static_cast<int>(k));
    if (IsInside(grey, corners[k])) {
      DescribeInside(grey, corners[k], gradients, bins);
    } else {
      DescribeAtBorder(grey, corners[k], bins);
    }
  }
  return descriptors;
}

}  // namespace jqstitching

#include "host/flat/flat_estimate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "host/flat/sample_unit.h"
#include "host/flat/smooth_surface.h"
#include "host/size_text.h"

namespace jqhost {
namespace {

constexpr int kLongestGrid = 96;  // cells

constexpr int kAnyBits = 16;  // of 16-bit frames: a dark frame of 16 bits is taken alike

double SampleOf(const cv::Mat& frame, int r, int i) {
  return frame.depth() == CV_8U ? frame.ptr<std::uint8_t>(r)[i] : frame.ptr<std::uint16_t>(r)[i];
}

// Sums of each cell of the grid, less the dark frame.
cv::Mat CellMeans(const cv::Mat& frame, const cv::Mat& dark, cv::Size grid) {
  const int channels = frame.channels();
  cv::Mat sums = cv::Mat::zeros(grid, CV_64FC(channels));
  cv::Mat areas = cv::Mat::zeros(grid, CV_32S);
  for (int r = 0; r < frame.rows; ++r) {
    const int gridRow = static_cast<int>(std::int64_t{r} * grid.height / frame.rows);
    double* sum = sums.ptr<double>(gridRow);
    for (int c = 0; c < frame.cols; ++c) {
      const int cell = static_cast<int>(std::int64_t{c} * grid.width / frame.cols);
      ++areas.ptr<int>(gridRow)[cell];
      for (int k = 0; k < channels; ++k) {
        const int i = c * channels + k;
        sum[cell * channels + k] +=
            SampleOf(frame, r, i) -
            (dark.empty() ? 0.0 : static_cast<double>(dark.ptr<float>(r)[i]));
      }
    }
  }
  for (int r = 0; r < grid.height; ++r) {
    for (int i = 0; i < grid.width * channels; ++i) {
      sums.ptr<double>(r)[i] /= areas.ptr<int>(r)[static_cast<size_t>(i / channels)];
    }
  }
  return sums;
}

// The mean of the middle half.
double MiddleMean(std::vector<double>& values) {
  std::sort(values.begin(), values.end());
  const std::size_t cut = values.size() / 4;
  double sum = 0.0;
  for (std::size_t i = cut; i < values.size() - cut; ++i) sum += values[i];
  return sum / static_cast<double>(values.size() - 2 * cut);
}

}  // namespace

std::string FlatEstimate::Add(const cv::Mat& frame) {
  if (m_type < 0) {
    if (!m_dark.empty() && m_dark.size() != frame.size()) {
      return "it has " + SizeText(frame.size()) + " pixels, the dark frame " +
             SizeText(m_dark.size());
    }
    if (!m_dark.empty() && m_dark.depth() == CV_8U && frame.depth() != CV_8U) {
      return "it has 16-bit samples, the dark frame 8-bit ones";
    }
    m_type = frame.type();
    m_size = frame.size();
    const double shrink =
        std::min(1.0, static_cast<double>(kLongestGrid) / std::max(m_size.width, m_size.height));
    m_grid = cv::Size(std::max(1, static_cast<int>(m_size.width * shrink)),
                      std::max(1, static_cast<int>(m_size.height * shrink)));
    if (!m_dark.empty()) {
      m_fitted = InUnitOfFrames(m_dark, frame.depth(), kAnyBits, frame.channels());
    }
  }
  if (frame.size() != m_size) {
    return "it has " + SizeText(frame.size()) + " pixels, the frames before " + SizeText(m_size);
  }
  if (frame.type() != m_type) return "its samples or channels differ from the frames before";
  cv::Mat cells = CellMeans(frame, m_fitted, m_grid);
  const cv::Scalar mean = cv::mean(cells);
  for (int k = 0; k < frame.channels(); ++k) {
    if (mean[k] <= 0) return "it is black";
  }
  for (int r = 0; r < m_grid.height; ++r) {
    for (int i = 0; i < m_grid.width * frame.channels(); ++i) {
      cells.ptr<double>(r)[i] /= mean[i % frame.channels()];
    }
  }
  m_cells.push_back(cells);
  m_means.push_back(mean);
  return std::string();
}

cv::Mat FlatEstimate::ChannelResult(int channel) const {
  const int channels = CV_MAT_CN(m_type);
  cv::Mat middle(m_grid, CV_64F);
  std::vector<double> values(m_cells.size());
  for (int r = 0; r < m_grid.height; ++r) {
    for (int c = 0; c < m_grid.width; ++c) {
      for (std::size_t f = 0; f < m_cells.size(); ++f) {
        values[f] = m_cells[f].ptr<double>(r)[c * channels + channel];
      }
      middle.at<double>(r, c) = MiddleMean(values);
    }
  }
  return SmoothSurface(middle, m_size);
}

cv::Mat FlatEstimate::Result() const {
  const int channels = CV_MAT_CN(m_type);
  const double finer = CV_MAT_DEPTH(m_type) == CV_8U ? 256.0 : 1.0;
  cv::Mat flat(m_size, CV_16UC(channels));
  for (int k = 0; k < channels; ++k) {
    const cv::Mat shape = ChannelResult(k);
    double light = 0.0;
    for (const cv::Scalar& mean : m_means) light += mean[k] / static_cast<double>(m_means.size());
    light /= cv::mean(shape)[0];
    for (int r = 0; r < m_size.height; ++r) {
      const double* from = shape.ptr<double>(r);
      for (int c = 0; c < m_size.width; ++c) {
        const int i = c * channels + k;
        const double none = m_fitted.empty() ? 0.0 : static_cast<double>(m_fitted.ptr<float>(r)[i]);
        const double value = std::floor((from[c] * light + none) * finer + 0.5);
        flat.ptr<std::uint16_t>(r)[i] = static_cast<std::uint16_t>(std::clamp(value, 1.0, 65535.0));
      }
    }
  }
  return flat;
}

}  // namespace jqhost

#include "registration/corners.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <opencv2/imgproc.hpp>

namespace jqstitching {
namespace {

// Responses nearer to the border than this are not computed.
constexpr int kMargin = 20;

struct ProductMaps {
  cv::Mat xx, yy, xy;
};

ProductMaps GradientProducts(const cv::Mat& image) {
  const int rows = image.rows, cols = image.cols;
  ProductMaps maps{cv::Mat::zeros(rows, cols, CV_32F), cv::Mat::zeros(rows, cols, CV_32F),
                   cv::Mat::zeros(rows, cols, CV_32F)};
  for (int i = 1; i < rows - 1; ++i) {
    const unsigned char* a = image.ptr(i - 1);
    const unsigned char* p = image.ptr(i);
    const unsigned char* b = image.ptr(i + 1);
    float* xx = maps.xx.ptr<float>(i);
    float* yy = maps.yy.ptr<float>(i);
    float* xy = maps.xy.ptr<float>(i);
    for (int j = 1; j < cols - 1; ++j) {
      const int sx = (a[j + 1] + 2 * p[j + 1] + b[j + 1]) - (a[j - 1] + 2 * p[j - 1] + b[j - 1]);
      const int sy = (b[j - 1] + 2 * b[j] + b[j + 1]) - (a[j - 1] + 2 * a[j] + a[j + 1]);
      // Absolute values before the product: the mixed term is never negative.
      const int gx = std::abs(sx) / 4, gy = std::abs(sy) / 4;
      xx[j] = static_cast<float>(gx * gx);
      yy[j] = static_cast<float>(gy * gy);
      xy[j] = static_cast<float>(gx * gy);
    }
  }
  return maps;
}

void Smooth(cv::Mat& map, const cv::Mat& column, const cv::Mat& row) {
  cv::filter2D(map, map, map.depth(), column, cv::Point(-1, -1), 0.0, cv::BORDER_REFLECT_101);
  cv::filter2D(map, map, map.depth(), row, cv::Point(-1, -1), 0.0, cv::BORDER_REFLECT_101);
}

}  // namespace

std::int32_t CornerLimit(std::int32_t detectLevel, std::int32_t cornerBudget) {
  const std::uint32_t product = (static_cast<std::uint32_t>(cornerBudget) + 8u) *
                                (580u - 80u * static_cast<std::uint32_t>(detectLevel));
  return static_cast<std::int32_t>(product) / 16;
}

std::vector<Candidate> FindCandidates(const cv::Mat& image) {
  std::vector<Candidate> candidates;
  const int rows = image.rows, cols = image.cols;
  ProductMaps maps = GradientProducts(image);
  const cv::Mat column = cv::getGaussianKernel(9, 8.0, CV_64F);
  const cv::Mat row = column.t();
  for (cv::Mat* map : {&maps.xx, &maps.yy, &maps.xy}) Smooth(*map, column, row);
  if (rows <= 2 * kMargin || cols <= 2 * kMargin) return candidates;

  cv::Mat response = cv::Mat::zeros(rows, cols, CV_32F);
  double sum = 0.0;
  for (int i = kMargin; i < rows - kMargin; ++i) {
    for (int j = kMargin; j < cols - kMargin; ++j) {
      const float a = maps.xx.at<float>(i, j), b = maps.yy.at<float>(i, j),
                  c = maps.xy.at<float>(i, j);
      const double det = a * b - c * c;
      const double trace = a + b;
      const float value = static_cast<float>(det + (trace * -0.007) * trace);
      const float kept = value > 0 ? value : 0.0f;
      response.at<float>(i, j) = kept;
      sum += kept;
    }
  }
  // The whole image's area, although the sum covers the interior only: this
  // lowers the threshold.
  const double mean = sum / static_cast<std::int32_t>(static_cast<std::uint32_t>(rows) *
                                                      static_cast<std::uint32_t>(cols));
  for (int i = kMargin; i < rows - kMargin; ++i) {
    const float* up = response.ptr<float>(i - 1);
    const float* mid = response.ptr<float>(i);
    const float* down = response.ptr<float>(i + 1);
    for (int j = kMargin; j < cols - kMargin; ++j) {
      const float largest = std::max({up[j - 1], up[j], up[j + 1], mid[j - 1], mid[j], mid[j + 1],
                                      down[j - 1], down[j], down[j + 1]});
      if (mid[j] == largest && static_cast<double>(largest) > mean) {
        candidates.push_back({mid[j], cv::Point(j, i)});
      }
    }
  }
  return candidates;
}

void PreselectStrongest(std::vector<Candidate>& candidates, std::int32_t limit) {
  const auto kept = static_cast<std::int32_t>(7u * static_cast<std::uint32_t>(limit));
  const auto count = static_cast<size_t>(kept);  // a negative number is a huge size: no limit
  if (candidates.size() <= count) return;
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& a, const Candidate& b) { return a.response > b.response; });
  candidates.resize(count);
}

std::vector<float> SuppressionRadii(const std::vector<Candidate>& candidates) {
  float strongest = 0;
  for (const Candidate& c : candidates) strongest = std::max(strongest, c.response);
  std::vector<float> radii;
  radii.reserve(candidates.size());
  for (const Candidate& c : candidates) {
    float radius = 65535.0f;
    if (!(static_cast<double>(c.response) > 0.5 * strongest)) {
      for (const Candidate& other : candidates) {
        if (!(0.5 * other.response > c.response)) continue;
        const auto dx = static_cast<std::uint32_t>(c.position.x - other.position.x);
        const auto dy = static_cast<std::uint32_t>(c.position.y - other.position.y);
        const auto distance = static_cast<float>(static_cast<std::int32_t>(dx * dx + dy * dy));
        if (distance < radius) radius = distance;
      }
    }
    radii.push_back(radius);
  }
  return radii;
}

std::vector<int> OrderByRadius(const std::vector<float>& radii) {
  std::vector<int> order(radii.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(),
                   [&radii](int a, int b) { return radii[a] > radii[b]; });
  return order;
}

}  // namespace jqstitching

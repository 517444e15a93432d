#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <numeric>
#include <opencv2/imgproc.hpp>

#include "reference/algorithm.h"
#include "reference/integer32.h"

namespace reference {
namespace {

const int kMargin = 20;
const double kCap = 65535.0;

struct Candidates {
  std::vector<float> response;
  std::vector<cv::Point> point;
};

// List order among equal keys.
std::vector<std::size_t> OrderByDecreasing(const std::vector<float>& key) {
  std::vector<std::size_t> order(key.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&key](std::size_t a, std::size_t b) { return key[a] > key[b]; });
  return order;
}

void GradientProducts(const cv::Mat& image, cv::Mat& xx, cv::Mat& yy, cv::Mat& xy) {
  for (int i = 1; i <= image.rows - 2; ++i) {
    const unsigned char* above = image.ptr(i - 1);
    const unsigned char* here = image.ptr(i);
    const unsigned char* below = image.ptr(i + 1);
    for (int j = 1; j <= image.cols - 2; ++j) {
      const int sx = (above[j + 1] + 2 * here[j + 1] + below[j + 1]) -
                     (above[j - 1] + 2 * here[j - 1] + below[j - 1]);
      const int sy = (below[j - 1] + 2 * below[j] + below[j + 1]) -
                     (above[j - 1] + 2 * above[j] + above[j + 1]);
      const int gx = std::abs(sx) / 4;
      const int gy = std::abs(sy) / 4;
      xx.at<float>(i, j) = static_cast<float>(gx * gx);
      yy.at<float>(i, j) = static_cast<float>(gy * gy);
      xy.at<float>(i, j) = static_cast<float>(gx * gy);
    }
  }
}

void Smooth(cv::Mat& map) {
  const cv::Mat kernel = cv::getGaussianKernel(9, 8.0, CV_64F);
  cv::filter2D(map, map, map.depth(), kernel, cv::Point(-1, -1), 0.0, cv::BORDER_REFLECT_101);
  cv::filter2D(map, map, map.depth(), kernel.t(), cv::Point(-1, -1), 0.0, cv::BORDER_REFLECT_101);
}

float Response(float a, float b, float c) {
  const float ab = a * b;
  const float cc = c * c;
  const float difference = ab - cc;
  const float sum = a + b;
  const double det = difference;
  const double t = sum;
  const double r = det + (t * -0.007) * t;
  const float narrowed = static_cast<float>(r);
  return narrowed > 0.0f ? narrowed : 0.0f;
}

// The response map of the interior; the return value is the sum over it.
double FillResponses(const cv::Mat& xx, const cv::Mat& yy, const cv::Mat& xy, cv::Mat& response) {
  double sum = 0.0;
  for (int i = kMargin; i <= response.rows - 1 - kMargin; ++i) {
    for (int j = kMargin; j <= response.cols - 1 - kMargin; ++j) {
      const float r = Response(xx.at<float>(i, j), yy.at<float>(i, j), xy.at<float>(i, j));
      response.at<float>(i, j) = r;
      sum += r;
    }
  }
  return sum;
}

Candidates LocalMaxima(const cv::Mat& response, double mean) {
  Candidates found;
  for (int i = kMargin; i <= response.rows - 1 - kMargin; ++i) {
    for (int j = kMargin; j <= response.cols - 1 - kMargin; ++j) {
      float largest = response.at<float>(i, j);
      for (int di = -1; di <= 1; ++di) {
        for (int dj = -1; dj <= 1; ++dj) {
          largest = std::max(largest, response.at<float>(i + di, j + dj));
        }
      }
      const float v = response.at<float>(i, j);
      if (v == largest && static_cast<double>(largest) > mean) {
        found.response.push_back(v);
        found.point.push_back(cv::Point(j, i));
      }
    }
  }
  return found;
}

Candidates Strongest(const Candidates& all, std::size_t count) {
  const std::vector<std::size_t> order = OrderByDecreasing(all.response);
  Candidates kept;
  for (std::size_t k = 0; k < count; ++k) {
    kept.response.push_back(all.response[order[k]]);
    kept.point.push_back(all.point[order[k]]);
  }
  return kept;
}

std::vector<float> SuppressionRadii(const Candidates& list) {
  double maxValue = 0.0;
  const cv::Mat responses(1, static_cast<int>(list.response.size()), CV_32F,
                          const_cast<float*>(list.response.data()));
  cv::minMaxLoc(responses, nullptr, &maxValue, nullptr, nullptr, cv::noArray());

  std::vector<float> radii(list.response.size());
  for (std::size_t i = 0; i < list.response.size(); ++i) {
    float radius = static_cast<float>(kCap);
    if (!(static_cast<double>(list.response[i]) > 0.5 * maxValue)) {
      for (std::size_t j = 0; j < list.response.size(); ++j) {
        if (0.5 * static_cast<double>(list.response[j]) > static_cast<double>(list.response[i])) {
          const int dx = Sub32(list.point[i].x, list.point[j].x);
          const int dy = Sub32(list.point[i].y, list.point[j].y);
          const float squared = static_cast<float>(Add32(Mul32(dx, dx), Mul32(dy, dy)));
          if (squared < radius) radius = squared;
        }
      }
    }
    radii[i] = radius;
  }
  return radii;
}

}  // namespace

void Algorithm::FindHarrisCornerCoordianteFun(cv::Mat image, std::vector<cv::Point>& corners) {
  m_nDownScale = m_nDetectLevel < 3 ? 2 : 1;
  if (m_nDetectLevel <= 2) {
    cv::resize(image, image, cv::Size(image.cols / 2, image.rows / 2), 1.0, 0.0, cv::INTER_LINEAR);
  }
  const int rows = image.rows;
  const int cols = image.cols;

  cv::Mat xx(cv::Mat::zeros(rows, cols, CV_32F));
  cv::Mat yy(cv::Mat::zeros(rows, cols, CV_32F));
  cv::Mat xy(cv::Mat::zeros(rows, cols, CV_32F));
  GradientProducts(image, xx, yy, xy);
  Smooth(xx);
  Smooth(yy);
  Smooth(xy);

  cv::Mat response(cv::Mat::zeros(rows, cols, CV_32F));
  Candidates list;
  if (rows > 2 * kMargin) {
    const double sum = FillResponses(xx, yy, xy, response);
    // The sum runs over the interior, the divisor is the whole area.
    const double mean = sum / Mul32(rows, cols);
    if (cols > 2 * kMargin) list = LocalMaxima(response, mean);
  }

  const int budget = Mul32(Add32(m_nCornerBudget, 8), Sub32(580, Mul32(80, m_nDetectLevel))) / 16;
  const std::size_t unsignedBudget = static_cast<std::size_t>(budget);
  const std::size_t preselected = static_cast<std::size_t>(Mul32(7, budget));
  const std::size_t outputs = std::min(list.point.size(), unsignedBudget);
  if (list.point.size() > preselected) list = Strongest(list, preselected);
  if (list.point.empty()) return;

  if (list.point.size() < outputs) {
    corners = list.point;
    return;
  }
  const std::vector<std::size_t> order = OrderByDecreasing(SuppressionRadii(list));
  std::vector<cv::Point> result = corners;
  for (std::size_t k = 0; k < outputs; ++k) {
    result.push_back(list.point[order[k]]);
    if (m_nDownScale != 1) {
      result[k].x = Mul32(result[k].x, m_nDownScale);
      result[k].y = Mul32(result[k].y, m_nDownScale);
    }
  }
  corners = result;
}

}  // namespace reference

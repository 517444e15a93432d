#include <cmath>
#include <cstdlib>
#include <opencv2/imgproc.hpp>

#include "reference/algorithm.h"
#include "reference/integer32.h"

namespace reference {
namespace {

const int kBorder = 4;  // reflect-101

void GreyAndHalve(cv::Mat& first, cv::Mat& second) {
  if (first.channels() > 1) cv::cvtColor(first, first, cv::COLOR_RGB2GRAY);
  if (second.channels() > 1) cv::cvtColor(second, second, cv::COLOR_RGB2GRAY);
  const cv::Size half(first.cols / 2, first.rows / 2);
  cv::resize(first, first, half, 0, 0, cv::INTER_LINEAR);
  cv::resize(second, second, half, 0, 0, cv::INTER_LINEAR);
}

void Blur(cv::Mat& image) {
  const cv::Mat kernel = cv::getGaussianKernel(5, 1.0, CV_64F);
  cv::filter2D(image, image, image.depth(), kernel, cv::Point(-1, -1), 0, kBorder);
  cv::filter2D(image, image, image.depth(), kernel.t(), cv::Point(-1, -1), 0, kBorder);
}

void SecondDifference(cv::Mat& image) {
  cv::Mat kernel(cv::Mat::zeros(3, 3, CV_32F));
  const float weights[3][3] = {{-1, 2, -1}, {-2, 4, -2}, {-1, 2, -1}};
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < 3; ++c) kernel.at<float>(r, c) = weights[r][c];
  }
  cv::filter2D(image, image, image.depth(), kernel, cv::Point(-1, -1), 0, kBorder);
}

}  // namespace

void Algorithm::CalacOverLapImageBright(cv::Mat first, cv::Mat second, float& bright) {
  GreyAndHalve(first, second);
  Blur(first);
  Blur(second);
  float sum = 0.0f;
  for (int r = 0; r < second.rows; ++r) {
    for (int c = 0; c < second.cols; ++c) {
      const int difference = std::abs(int{first.ptr(r)[c]} - int{second.ptr(r)[c]});
      sum += static_cast<float>(difference);
    }
  }
  bright = sum / static_cast<float>(Mul32(second.rows, second.cols));
}

void Algorithm::CalacOverLapImageDefinition(cv::Mat first, cv::Mat second, float& definition) {
  GreyAndHalve(first, second);
  SecondDifference(first);
  SecondDifference(second);
  float sumA = 0.0f;
  float sumB = 0.0f;
  std::int32_t countA = 0;
  std::int32_t countB = 0;
  if (second.rows >= 11) {
    for (int r = 5; r < second.rows - 5; ++r) {
      if (second.cols < 11) continue;
      for (int c = 5; c < second.cols - 5; ++c) {
        if (first.ptr(r)[c] > 10) {
          sumA += static_cast<float>(first.ptr(r)[c]);
          ++countA;
        }
        if (second.ptr(r)[c] > 10) {
          sumB += static_cast<float>(second.ptr(r)[c]);
          ++countB;
        }
      }
    }
  }
  // 0 / 0 is NaN where a picture has no strong response.
  const float meanA = sumA / static_cast<float>(countA);
  const float meanB = sumB / static_cast<float>(countB);
  definition = std::fabs(meanA - meanB);
}

void Algorithm::CalacOverLapImageFlages(int offsetX, int offsetY, int rows, int cols, cv::Mat first,
                                        cv::Mat second, int& flag) {
  float bright = 0.0f;
  float definition = 0.0f;
  CalacOverLapImageBright(first, second, bright);
  CalacOverLapImageDefinition(first, second, definition);
  flag = 0;
  if (offsetY < rows && offsetX < cols && bright < m_fBrightThreshold &&
      definition < m_fDefinitionThreshold) {
    flag = 1;
  }
}

}  // namespace reference

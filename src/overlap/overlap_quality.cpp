#include "overlap/overlap_quality.h"

#include <cmath>
#include <cstdlib>
#include <opencv2/imgproc.hpp>

#include "jqstitchingalgorithm.h"
#include "overlap/blur.h"

namespace jqstitching {
namespace {

cv::Mat EdgeResponse(const cv::Mat& picture) {
  // Vertical smoothing times horizontal second difference: one-directional.
  const cv::Mat kernel = (cv::Mat_<float>(3, 3) << -1, 2, -1, -2, 4, -2, -1, 2, -1);
  cv::Mat response;
  cv::filter2D(picture, response, picture.depth(), kernel, cv::Point(-1, -1), 0,
               cv::BORDER_REFLECT_101);
  return response;
}

}  // namespace

HalvedPair HalvePair(const cv::Mat& first, const cv::Mat& second) {
  HalvedPair pair{first, second};
  if (first.channels() > 1) cv::cvtColor(first, pair.first, cv::COLOR_RGB2GRAY);
  if (second.channels() > 1) cv::cvtColor(second, pair.second, cv::COLOR_RGB2GRAY);
  const cv::Size half(first.cols / 2, first.rows / 2);
  cv::resize(pair.first, pair.first, half, 0, 0, cv::INTER_LINEAR);
  cv::resize(pair.second, pair.second, half, 0, 0, cv::INTER_LINEAR);
  return pair;
}

float BrightnessDifference(const HalvedPair& pair) {
  cv::Mat first = pair.first.clone(), second = pair.second.clone();
  BlurInPlace(first);
  BlurInPlace(second);
  float sum = 0;
  for (int r = 0; r < second.rows; ++r) {
    const unsigned char* a = first.ptr(r);
    const unsigned char* b = second.ptr(r);
    for (int c = 0; c < second.cols; ++c) sum += static_cast<float>(std::abs(a[c] - b[c]));
  }
  return sum / static_cast<float>(second.rows * second.cols);
}

float DefinitionDifference(const HalvedPair& pair) {
  constexpr int kMargin = 5;
  constexpr int kWeakest = 10;
  const cv::Mat first = EdgeResponse(pair.first), second = EdgeResponse(pair.second);
  float sumFirst = 0, sumSecond = 0;
  int countFirst = 0, countSecond = 0;
  for (int r = kMargin; r < second.rows - kMargin; ++r) {
    const unsigned char* a = first.ptr(r);
    const unsigned char* b = second.ptr(r);
    for (int c = kMargin; c < second.cols - kMargin; ++c) {
      if (a[c] > kWeakest) {
        sumFirst += static_cast<float>(a[c]);
        ++countFirst;
      }
      if (b[c] > kWeakest) {
        sumSecond += static_cast<float>(b[c]);
        ++countSecond;
      }
    }
  }
  return std::fabs(sumFirst / static_cast<float>(countFirst) -
                   sumSecond / static_cast<float>(countSecond));
}

}  // namespace jqstitching

void JQStitchingAlgorithm::CalacOverLapImageBright(cv::Mat first, cv::Mat second, float& bright) {
  bright = jqstitching::BrightnessDifference(jqstitching::HalvePair(first, second));
}

void JQStitchingAlgorithm::CalacOverLapImageDefinition(cv::Mat first, cv::Mat second,
                                                       float& definition) {
  definition = jqstitching::DefinitionDifference(jqstitching::HalvePair(first, second));
}

void JQStitchingAlgorithm::CalacOverLapImageFlages(int offsetX, int offsetY, int rows, int cols,
                                                   cv::Mat first, cv::Mat second, int& flag) {
  using namespace jqstitching;
  const HalvedPair pair = HalvePair(first, second);
  const float bright = BrightnessDifference(pair);
  const float definition = DefinitionDifference(pair);
  // Signed and one-sided: a negative offset of any size passes. NaN fails.
  const bool fit = offsetY < rows && offsetX < cols && bright < m_fBrightThreshold &&
                   definition < m_fDefinitionThreshold;
  flag = fit ? 1 : 0;
}

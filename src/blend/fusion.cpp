#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "jqstitchingalgorithm.h"

namespace {

constexpr float kCap = 255.0f;
constexpr float kStraight = 0.2f;
constexpr float kDiagonal = 0.3f;

void CheckPair(const cv::Mat& oldBlock, const cv::Mat& newFrame) {
  if (oldBlock.size() != newFrame.size() || oldBlock.type() != newFrame.type()) {
    CV_Error(cv::Error::StsUnmatchedSizes,
             cv::format("fusion needs two images of one size and type, not %d x %d type %d and "
                        "%d x %d type %d",
                        oldBlock.cols, oldBlock.rows, oldBlock.type(), newFrame.cols, newFrame.rows,
                        newFrame.type()));
  }
  if (oldBlock.type() != CV_8UC1 && oldBlock.type() != CV_8UC3) {
    CV_Error(
        cv::Error::StsUnsupportedFormat,
        cv::format("fusion takes 8-bit images of 1 or 3 channels, not type %d", oldBlock.type()));
  }
}

// 255 where the grey value is not 0, else 0.
cv::Mat ContentMap(const cv::Mat& image) {
  cv::Mat grey = image;
  if (image.channels() > 1) cv::cvtColor(image, grey, cv::COLOR_RGB2GRAY);
  cv::Mat map;
  grey.convertTo(map, CV_32F);
  for (int r = 0; r < map.rows; ++r) {
    float* d = map.ptr<float>(r);
    for (int c = 0; c < map.cols; ++c) d[c] = d[c] > 0 ? kCap : 0.0f;
  }
  return map;
}

void EmptyBorder(cv::Mat& map) {
  map.row(0).setTo(0);
  map.row(map.rows - 1).setTo(0);
  map.col(0).setTo(0);
  map.col(map.cols - 1).setTo(0);
}

void Lower(float& value, float candidate) {
  value = std::min(value, candidate);
}

void ForwardRow(float* d, const float* up, int cols) {
  const int last = cols - 1;
  Lower(d[0], up[0] + kStraight);
  if (cols > 1) Lower(d[0], up[1] + kDiagonal);
  // The last column comes before the interior, and its left neighbour counts as
  // a diagonal one.
  Lower(d[last], up[last] + kStraight);
  if (cols > 1) {
    Lower(d[last], up[last - 1] + kDiagonal);
    Lower(d[last], d[last - 1] + kDiagonal);
  }
  for (int c = 1; c < last; ++c) {
    Lower(d[c], d[c - 1] + kStraight);
    Lower(d[c], up[c - 1] + kDiagonal);
    Lower(d[c], up[c] + kStraight);
    Lower(d[c], up[c + 1] + kDiagonal);
  }
}

void BackwardRow(float* d, const float* down, int cols) {
  const int last = cols - 1;
  Lower(d[last], down[last] + kStraight);
  if (cols > 1) Lower(d[last], down[last - 1] + kDiagonal);
  for (int c = last - 1; c >= 1; --c) {
    Lower(d[c], d[c + 1] + kStraight);
    Lower(d[c], down[c - 1] + kDiagonal);
    Lower(d[c], down[c] + kStraight);
    Lower(d[c], down[c + 1] + kDiagonal);
  }
  Lower(d[0], down[0] + kStraight);
  if (cols > 1) Lower(d[0], down[1] + kDiagonal);
}

void ChamferDistance(cv::Mat& map) {
  for (int r = 1; r < map.rows; ++r) ForwardRow(map.ptr<float>(r), map.ptr<float>(r - 1), map.cols);
  for (int r = map.rows - 2; r >= 0; --r) {
    BackwardRow(map.ptr<float>(r), map.ptr<float>(r + 1), map.cols);
  }
}

cv::Mat OldContentWeight(const cv::Mat& oldBlock, const cv::Mat& newFrame) {
  CheckPair(oldBlock, newFrame);
  if (oldBlock.empty()) return cv::Mat(oldBlock.size(), CV_8U);
  cv::Mat oldMap = ContentMap(oldBlock), newMap = ContentMap(newFrame);
  EmptyBorder(newMap);
  ChamferDistance(oldMap);
  ChamferDistance(newMap);
  cv::Mat weight(oldMap.size(), CV_8U);
  for (int r = 0; r < weight.rows; ++r) {
    const float* a = oldMap.ptr<float>(r);
    const float* b = newMap.ptr<float>(r);
    unsigned char* w = weight.ptr(r);
    for (int c = 0; c < weight.cols; ++c) {
      // Both empty: the frame's (black) pixel is kept.
      const float share = a[c] > 0 ? 255.0f * a[c] / (a[c] + b[c]) : 0.0f;
      w[c] = cv::saturate_cast<unsigned char>(share);
    }
  }
  return weight;
}

}  // namespace

void JQStitchingAlgorithm::WeightofTwoAreaFun(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& weight) {
  weight = OldContentWeight(oldBlock, newFrame);
}

void JQStitchingAlgorithm::TwoImageFusion(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& fused) {
  const cv::Mat weight = OldContentWeight(oldBlock, newFrame);
  const int channels = oldBlock.channels();
  for (int r = 0; r < weight.rows; ++r) {
    const unsigned char* w = weight.ptr(r);
    const unsigned char* a = oldBlock.ptr(r);
    unsigned char* b = newFrame.ptr(r);
    for (int c = 0; c < weight.cols; ++c) {
      for (int k = 0; k < channels; ++k, ++a, ++b) {
        const int sum = (255 - w[c]) * *b + w[c] * *a;
        // The divisors differ on purpose.
        *b = static_cast<unsigned char>(channels == 1 ? sum / 256 : sum / 255);
      }
    }
  }
  fused = newFrame;
}

#include <algorithm>
#include <opencv2/imgproc.hpp>

#include "reference/algorithm.h"

namespace reference {
namespace {

void CheckPair(const cv::Mat& oldBlock, const cv::Mat& newFrame) {
  if (oldBlock.size() != newFrame.size() || oldBlock.type() != newFrame.type() ||
      (oldBlock.type() != CV_8UC1 && oldBlock.type() != CV_8UC3)) {
    CV_Error(cv::Error::StsUnmatchedFormats,
             "two images of one size, 8-bit with 1 or 3 channels, are needed");
  }
}

void Binarise(cv::Mat& map) {
  for (int r = 0; r < map.rows; ++r) {
    for (int c = 0; c < map.cols; ++c) {
      map.at<float>(r, c) = map.at<float>(r, c) > 0.0f ? 255.0f : 0.0f;
    }
  }
}

// d = the smaller of d and neighbour + step; a neighbour outside the row is
// skipped.
void Relax(float& d, const float* row, int c, int cols, float step) {
  if (c >= 0 && c < cols) d = std::min(d, row[c] + step);
}

const float kStraight = 0.2f;
const float kDiagonal = 0.3f;

void ForwardRow(cv::Mat& map, int r) {
  const int cols = map.cols;
  const int last = cols - 1;
  float* d = map.ptr<float>(r);
  const float* up = map.ptr<float>(r - 1);
  Relax(d[0], up, 0, cols, kStraight);
  Relax(d[0], up, 1, cols, kDiagonal);
  // The last column comes before the interior and takes its left neighbour, not
  // yet updated, at the diagonal step.
  Relax(d[last], up, last, cols, kStraight);
  Relax(d[last], up, last - 1, cols, kDiagonal);
  Relax(d[last], d, last - 1, cols, kDiagonal);
  for (int c = 1; c <= cols - 2; ++c) {
    Relax(d[c], d, c - 1, cols, kStraight);
    Relax(d[c], up, c - 1, cols, kDiagonal);
    Relax(d[c], up, c, cols, kStraight);
    Relax(d[c], up, c + 1, cols, kDiagonal);
  }
}

void BackwardRow(cv::Mat& map, int r) {
  const int cols = map.cols;
  const int last = cols - 1;
  float* d = map.ptr<float>(r);
  const float* down = map.ptr<float>(r + 1);
  Relax(d[last], down, last, cols, kStraight);
  Relax(d[last], down, last - 1, cols, kDiagonal);
  for (int c = cols - 2; c >= 1; --c) {
    if (d[c] == 0.0f) continue;
    Relax(d[c], d, c + 1, cols, kStraight);
    Relax(d[c], down, c - 1, cols, kDiagonal);
    Relax(d[c], down, c, cols, kStraight);
    Relax(d[c], down, c + 1, cols, kDiagonal);
  }
  Relax(d[0], down, 0, cols, kStraight);
  Relax(d[0], down, 1, cols, kDiagonal);
}

}  // namespace

void Algorithm::TwoImageFusion(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& fused) {
  cv::Mat weight;
  WeightofTwoAreaFun(oldBlock, newFrame, weight);
  for (int i = 0; i < weight.rows; ++i) {
    const unsigned char* oldRow = oldBlock.ptr(i);
    unsigned char* newRow = newFrame.ptr(i);
    for (int j = 0; j < weight.cols; ++j) {
      const int w = weight.ptr(i)[j];
      if (oldBlock.channels() == 1) {
        newRow[j] = static_cast<unsigned char>(((255 - w) * newRow[j] + w * oldRow[j]) >> 8);
      } else {
        for (int k = 3 * j; k < 3 * j + 3; ++k) {
          newRow[k] = static_cast<unsigned char>(((255 - w) * newRow[k] + w * oldRow[k]) / 255);
        }
      }
    }
  }
  fused = newFrame;
}

void Algorithm::WeightofTwoAreaFun(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& weight) {
  CheckPair(oldBlock, newFrame);
  if (oldBlock.channels() > 1) cv::cvtColor(oldBlock, oldBlock, cv::COLOR_RGB2GRAY);
  if (newFrame.channels() > 1) {
    cv::cvtColor(newFrame, newFrame, cv::COLOR_RGB2GRAY);
  } else {
    newFrame = newFrame.clone();  // its border is about to be changed
  }
  const int rows = oldBlock.rows;
  const int cols = oldBlock.cols;
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < cols; ++c) {
      if (r == 0 || r == rows - 1 || c == 0 || c == cols - 1) newFrame.ptr(r)[c] = 0;
    }
  }
  oldBlock.convertTo(oldBlock, CV_32F, 1.0, 0.0);
  newFrame.convertTo(newFrame, CV_32F, 1.0, 0.0);
  Binarise(oldBlock);
  Binarise(newFrame);
  for (int r = 1; r <= rows - 1; ++r) {
    ForwardRow(oldBlock, r);
    ForwardRow(newFrame, r);
  }
  for (int r = rows - 2; r >= 0; --r) {
    BackwardRow(oldBlock, r);
    BackwardRow(newFrame, r);
  }
  cv::Mat share = 255.0 * oldBlock / (oldBlock + newFrame);
  cv::Mat result;
  share.convertTo(result, CV_8U, 1.0, 0.0);
  weight = result;
}

}  // namespace reference

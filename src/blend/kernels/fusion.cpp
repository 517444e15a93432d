#include "blend/kernels/fusion.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "blend/kernels/fuse_row.h"
#include "blend/kernels/weight_row.h"

namespace jqstitching {
namespace {

void FuseRow(const std::uint8_t* weights, const std::uint8_t* old, cv::Mat& frame, int r,
             std::uint8_t* block, FusionScratch& scratch) {
  const int cols = frame.cols;
  std::uint8_t* row = frame.ptr(r);
  if (frame.channels() == 1) {
    if (weights == nullptr) {
      weights = scratch.weights.data();
      std::fill_n(scratch.weights.data(), cols, std::uint8_t{0});
    }
    FuseGreyRow(old, weights, row, block, cols);
    return;
  }
  const std::size_t count = 3 * static_cast<std::size_t>(cols);
  if (weights == nullptr) {
    if (block != nullptr) std::copy_n(row, count, block);
    return;
  }
  TripleWeights(weights, scratch.tripled.data(), cols);
  FuseColourRow(old, scratch.tripled.data(), row, block, count);
}

}  // namespace

bool SharesMemory(const cv::Mat& a, const cv::Mat& b) {
  const std::less<> before;
  return before(a.datastart, b.dataend) && before(b.datastart, a.dataend);
}

void CheckFusionPair(cv::Size oldSize, int oldType, cv::Size newSize, int newType) {
  if (oldSize != newSize || oldType != newType) {
    CV_Error(
        cv::Error::StsUnmatchedSizes,
        cv::format("fusion needs two images of one size and type, not %d x %d type %d and "
                   "%d x %d type %d",
                   oldSize.width, oldSize.height, oldType, newSize.width, newSize.height, newType));
  }
  if (oldType != CV_8UC1 && oldType != CV_8UC3) {
    CV_Error(cv::Error::StsUnsupportedFormat,
             cv::format("fusion takes 8-bit images of 1 or 3 channels, not type %d", oldType));
  }
}

void CheckFusionPair(const cv::Mat& oldBlock, const cv::Mat& newFrame) {
  CheckFusionPair(oldBlock.size(), oldBlock.type(), newFrame.size(), newFrame.type());
}

cv::Mat OldContentWeight(const cv::Mat& oldBlock, const cv::Mat& newFrame, FusionScratch& scratch) {
  CheckFusionPair(oldBlock, newFrame);
  cv::Mat weight(oldBlock.size(), CV_8U);
  if (weight.empty()) return weight;
  FusionWeights rows(newFrame, scratch);
  rows.read(oldBlock);
  for (int r = weight.rows - 1; r >= 0; --r) {
    const std::uint8_t* weights = rows.next(r);
    if (weights != nullptr) {
      std::copy_n(weights, weight.cols, weight.ptr(r));
    } else {
      std::fill_n(weight.ptr(r), weight.cols, std::uint8_t{0});
    }
  }
  return weight;
}

void FuseImages(cv::Mat& oldBlock, cv::Mat& newFrame, bool writeBack, FusionScratch& scratch) {
  CheckFusionPair(oldBlock, newFrame);
  if (newFrame.empty()) return;
  FusionWeights rows(newFrame, scratch);
  FuseImages(oldBlock, newFrame, writeBack, rows);
}

void FuseImages(cv::Mat& oldBlock, cv::Mat& newFrame, bool writeBack, FusionWeights& rows) {
  CheckFusionPair(oldBlock, newFrame);
  // Views of one matrix: the old content apart, and the block written at the end.
  const bool shared = SharesMemory(oldBlock, newFrame);
  const cv::Mat old = shared ? oldBlock.clone() : oldBlock;
  cv::Mat fused;
  if (shared && writeBack) fused.create(newFrame.size(), newFrame.type());

  rows.read(old);
  for (int r = newFrame.rows - 1; r >= 0; --r) {
    std::uint8_t* block = writeBack && !shared ? oldBlock.ptr(r) : nullptr;
    FuseRow(rows.next(r), old.ptr(r), newFrame, r, block, rows.scratch());
  }
  if (shared && writeBack) {
    newFrame.copyTo(fused);
    fused.copyTo(oldBlock);
  }
}

}  // namespace jqstitching

#include "blend/kernels/fusion.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <opencv2/imgproc.hpp>

#include "blend/kernels/chamfer_steps.h"
#include "blend/kernels/content_row.h"
#include "blend/kernels/fuse_row.h"
#include "blend/kernels/row_layout.h"
#include "blend/kernels/weight_row.h"
#include "picture/library_rounding.h"

namespace jqstitching {
namespace {

bool SharesMemory(const cv::Mat& a, const cv::Mat& b) {
  const std::less<> before;
  return before(a.datastart, b.dataend) && before(b.datastart, a.dataend);
}

// The content of `count` columns of row r from column `begin` on. A pixel is empty
// where the image library's grey is 0.
RowContent MarkImageRow(const cv::Mat& image, int r, int begin, int count, std::uint8_t* content) {
  if (image.channels() == 1 || OwnGreyFollows()) {
    const std::uint8_t* first = image.ptr(r) + static_cast<std::size_t>(begin) * image.elemSize();
    return MarkContent(first, image.channels(), content, count);
  }
  cv::Mat grey;
  cv::cvtColor(image.row(r), grey, cv::COLOR_RGB2GRAY);
  return MarkContent(grey.ptr() + begin, 1, content, count);
}

/// The weights of a pair, row by row from the bottom.
class WeightRows {
 public:
  /// Reads both images; all memory is taken here.
  WeightRows(const cv::Mat& oldBlock, const cv::Mat& newFrame, FusionScratch& scratch)
      : m_scratch(scratch), m_cols(newFrame.cols) {
    const std::size_t padded = PaddedCols(m_cols);
    std::uint8_t* content = scratch.content.reserve(padded);
    scratch.weights.reserve(padded);
    scratch.tripled.reserve(3 * padded);
    scratch.oldMap.prepare(oldBlock.rows, m_cols);
    scratch.edge.prepare(oldBlock.rows, m_cols);
    for (int r = 0; r < oldBlock.rows; ++r) {
      const RowContent summary = MarkImageRow(oldBlock, r, 0, m_cols, content);
      scratch.oldMap.forwardRow(r, summary, content);
    }
    m_hasHoles = hasHoles(newFrame, content);
    if (m_hasHoles) mapFrame(newFrame, content);
  }

  /// The weights of row r, or null when all are 0.
  const std::uint8_t* next(int r) {
    const float* oldRow = m_scratch.oldMap.backwardRow(r);
    const float* newRow = m_hasHoles ? m_scratch.newMap.backwardRow(r) : nullptr;
    if (m_scratch.oldMap.isEmptyRow(r)) return nullptr;
    std::uint8_t* weights = m_scratch.weights.data();
    if (m_hasHoles) {
      WeightRow(oldRow, newRow, kDistanceCap, weights, m_cols);
    } else {
      const EdgeDistance& edge = m_scratch.edge;
      WeightRow(oldRow, edge.columnDistances(), edge.rowDistance(r), weights, m_cols);
    }
    return weights;
  }

 private:
  // Empty pixels inside the border. The border itself counts as empty anyway.
  bool hasHoles(const cv::Mat& frame, std::uint8_t* content) const {
    for (int r = 1; r + 1 < frame.rows && m_cols > 2; ++r) {
      if (MarkImageRow(frame, r, 1, m_cols - 2, content) != RowContent::kFull) return true;
    }
    return false;
  }

  void mapFrame(const cv::Mat& frame, std::uint8_t* content) {
    m_scratch.newMap.prepare(frame.rows, m_cols);
    for (int r = 0; r < frame.rows; ++r) {
      RowContent summary = RowContent::kEmpty;
      if (r > 0 && r + 1 < frame.rows) {
        summary = MarkImageRow(frame, r, 0, m_cols, content);
        if (summary == RowContent::kFull) summary = RowContent::kMixed;
        content[0] = content[m_cols - 1] = 0;
      }
      m_scratch.newMap.forwardRow(r, summary, content);
    }
  }

  FusionScratch& m_scratch;
  int m_cols;
  bool m_hasHoles = false;
};

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

void CheckFusionPair(const cv::Mat& oldBlock, const cv::Mat& newFrame) {
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

cv::Mat OldContentWeight(const cv::Mat& oldBlock, const cv::Mat& newFrame, FusionScratch& scratch) {
  CheckFusionPair(oldBlock, newFrame);
  cv::Mat weight(oldBlock.size(), CV_8U);
  if (weight.empty()) return weight;
  WeightRows rows(oldBlock, newFrame, scratch);
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
  // Views of one matrix: the old content apart, and the block written at the end.
  const bool shared = SharesMemory(oldBlock, newFrame);
  const cv::Mat old = shared ? oldBlock.clone() : oldBlock;
  cv::Mat fused;
  if (shared && writeBack) fused.create(newFrame.size(), newFrame.type());

  WeightRows rows(old, newFrame, scratch);
  for (int r = newFrame.rows - 1; r >= 0; --r) {
    std::uint8_t* block = writeBack && !shared ? oldBlock.ptr(r) : nullptr;
    FuseRow(rows.next(r), old.ptr(r), newFrame, r, block, scratch);
  }
  if (shared && writeBack) {
    newFrame.copyTo(fused);
    fused.copyTo(oldBlock);
  }
}

}  // namespace jqstitching

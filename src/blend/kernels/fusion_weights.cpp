#include "blend/kernels/fusion_weights.h"

#include <opencv2/imgproc.hpp>

#include "blend/kernels/chamfer_steps.h"
#include "blend/kernels/content_row.h"
#include "blend/kernels/row_layout.h"
#include "blend/kernels/weight_row.h"
#include "picture/library_rounding.h"

namespace jqstitching {
namespace {

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

}  // namespace

FusionWeights::FusionWeights(const cv::Mat& newFrame, FusionScratch& scratch)
    : m_scratch(scratch), m_cols(newFrame.cols) {
  const std::size_t padded = PaddedCols(m_cols);
  std::uint8_t* content = scratch.content.reserve(padded);
  scratch.weights.reserve(padded);
  scratch.tripled.reserve(3 * padded);
  scratch.oldMap.prepare(newFrame.rows, m_cols);
  scratch.edge.prepare(newFrame.rows, m_cols);
  m_hasHoles = hasHoles(newFrame, content);
  if (m_hasHoles) mapFrame(newFrame, content);
}

bool FusionWeights::ReadingMayFail(const cv::Mat& oldBlock) {
  return oldBlock.channels() != 1 && !OwnGreyFollows();
}

void FusionWeights::read(const cv::Mat& oldBlock) {
  std::uint8_t* content = m_scratch.content.data();
  for (int r = 0; r < oldBlock.rows; ++r) {
    const RowContent summary = MarkImageRow(oldBlock, r, 0, m_cols, content);
    m_scratch.oldMap.forwardRow(r, summary, content);
  }
}

const std::uint8_t* FusionWeights::next(int r) {
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

bool FusionWeights::hasHoles(const cv::Mat& frame, std::uint8_t* content) const {
  for (int r = 1; r + 1 < frame.rows && m_cols > 2; ++r) {
    if (MarkImageRow(frame, r, 1, m_cols - 2, content) != RowContent::kFull) return true;
  }
  return false;
}

void FusionWeights::mapFrame(const cv::Mat& frame, std::uint8_t* content) {
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

}  // namespace jqstitching

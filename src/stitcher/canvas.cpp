#include <opencv2/imgproc.hpp>

#include "engine/picture_check.h"
#include "picture/wrapping.h"
#include "stitcher/run_state.h"

using jqstitching::CheckPicture;
using jqstitching::WrappingSum;

void JQImageStitching::initResultMat(cv::Mat* frame) {
  if (frame == nullptr) return;
  CheckPicture(*frame);
  const int rows = frame->rows, cols = frame->cols;
  cv::Mat canvas = cv::Mat::zeros(2 * rows, 2 * cols, frame->channels() == 1 ? CV_8UC1 : CV_8UC3);
  // An odd size leaves the extra pixel on the left and top margins.
  const cv::Rect place(cols - cols / 2, rows - rows / 2, cols, rows);
  frame->copyTo(canvas(place));
  m_canvasRows = 2 * rows;
  m_canvasCols = 2 * cols;
  m_frameRows = rows;
  m_frameCols = cols;
  m_frameSize = cv::Size(cols, rows);
  m_framePos = place.tl();
  m_contentRect = {place.x, place.y, place.x + cols, place.y + rows};
  m_resultMat = canvas;
}

void JQImageStitching::extendResultMat(cv::Mat* frame) {
  if (frame == nullptr) return;
  CheckPicture(*frame);
  CheckPicture(m_resultMat);
  const int rows = frame->rows, cols = frame->cols;
  const int dx = m_frameOffset.x, dy = m_frameOffset.y;
  cv::Point pos = m_framePos;
  JQStitchingRect content = m_contentRect;
  cv::Mat canvas = m_resultMat;

  const auto grow = [&](bool top, bool bottom, bool left, bool right) {
    cv::copyMakeBorder(canvas, canvas, top ? m_frameRows : 0, bottom ? m_frameRows : 0,
                       left ? m_frameCols : 0, right ? m_frameCols : 0, cv::BORDER_CONSTANT,
                       cv::Scalar(0));
    if (left) {
      for (std::int32_t* x : {&pos.x, &content.x1, &content.x2}) {
        *x = WrappingSum(*x, m_frameCols);
      }
    }
    if (top) {
      for (std::int32_t* y : {&pos.y, &content.y1, &content.y2}) {
        *y = WrappingSum(*y, m_frameRows);
      }
    }
  };
  // What the host has written can lie at the limits of its type: sums wrap there.
  const auto left = [&] { return WrappingSum(pos.x, dx) <= 0; };
  const auto right = [&] { return WrappingSum(pos.x, dx, cols) >= m_canvasCols; };
  const auto top = [&] { return WrappingSum(pos.y, dy) <= 0; };
  const auto bottom = [&] { return WrappingSum(pos.y, dy, rows) >= m_canvasRows; };

  // Each check sees the position that the ones before left, and the canvas size
  // from before the call.
  if (top()) grow(true, false, left(), !left() && right());
  if (bottom()) grow(false, true, left(), !left() && right());
  if (!top() && !bottom()) {
    if (left()) grow(false, false, true, false);
    if (right()) grow(false, false, false, true);
  }
  m_framePos = pos;
  m_contentRect = content;
  m_resultMat = canvas;
  m_canvasRows = canvas.rows;
  m_canvasCols = canvas.cols;
}

namespace {

// The box widens on the side towards which the frame moved, and only when the
// frame does not reach past the other edge too.
void Widen(std::int32_t& low, std::int32_t& high, int start, int size) {
  const std::int32_t end = WrappingSum(start, size);
  if (start < low) {
    if (end < high) low = start;
  } else if (start > low && end > high) {
    high = end;
  }
}

}  // namespace

void JQImageStitching::findCutPoint(cv::Mat* frame) {
  if (frame == nullptr) return;
  CheckPicture(*frame);
  Widen(m_contentRect.x1, m_contentRect.x2, m_framePos.x, frame->cols);
  Widen(m_contentRect.y1, m_contentRect.y2, m_framePos.y, frame->rows);
  m_cutRect = m_contentRect;
}

bool JQImageStitching::ChangeStitchingBackground(int c0, int c1, int c2) {
  if (m_curFrame.empty()) return false;
  if (c0 == 0 && c1 == 0 && c2 == 0) return true;
  RunState::exposeCurrentFrame(*this);
  // Three bytes a pixel whatever the type; never past a row's end.
  const size_t rowBytes = static_cast<size_t>(m_curFrame.cols) * m_curFrame.elemSize();
  const size_t pixels = std::min(static_cast<size_t>(m_curFrame.cols), rowBytes / 3);
  for (int r = 0; r < m_curFrame.rows; ++r) {
    unsigned char* p = m_curFrame.ptr(r);
    for (size_t i = 0; i < pixels; ++i, p += 3) {
      if (p[0] != 0 || p[1] != 0 || p[2] != 0) continue;
      p[0] = static_cast<unsigned char>(c0);
      p[1] = static_cast<unsigned char>(c1);
      p[2] = static_cast<unsigned char>(c2);
    }
  }
  return true;
}

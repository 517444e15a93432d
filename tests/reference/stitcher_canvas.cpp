#include <opencv2/imgproc.hpp>

#include "reference/integer32.h"
#include "reference/stitcher.h"

namespace reference {
namespace {

void Grow(cv::Mat& canvas, int top, int bottom, int left, int right) {
  cv::copyMakeBorder(canvas, canvas, top, bottom, left, right, cv::BORDER_CONSTANT, cv::Scalar(0));
}

}  // namespace

void Stitcher::initResultMat(cv::Mat* frame) {
  const int rows = frame->rows;
  const int cols = frame->cols;
  m_canvasRows = 2 * rows;
  m_canvasCols = 2 * cols;
  m_frameRows = rows;
  m_frameCols = cols;
  m_frameSize = cv::Size(cols, rows);
  m_framePos = cv::Point(cols - cols / 2, rows - rows / 2);
  m_contentRect = {m_framePos.x, m_framePos.y, m_framePos.x + cols, m_framePos.y + rows};
  m_resultMat = cv::Mat::zeros(2 * rows, 2 * cols, frame->channels() == 1 ? CV_8UC1 : CV_8UC3);
  cv::Mat place = m_resultMat.rowRange(m_framePos.y, m_framePos.y + rows)
                      .colRange(m_framePos.x, m_framePos.x + cols);
  frame->copyTo(place);
}

void Stitcher::extendResultMat(cv::Mat* frame) {
  const int rows = frame->rows;
  const int cols = frame->cols;
  const int dx = m_frameOffset.x;
  const int dy = m_frameOffset.y;
  const int rowStep = m_frameRows;
  const int colStep = m_frameCols;
  int& x = m_framePos.x;
  int& y = m_framePos.y;

  if (Add32(y, dy) <= 0) {
    if (Add32(x, dx) <= 0) {
      Grow(m_resultMat, rowStep, 0, colStep, 0);
      x = Add32(x, colStep);
      y = Add32(y, rowStep);
      m_contentRect.x1 = Add32(m_contentRect.x1, colStep);
      m_contentRect.x2 = Add32(m_contentRect.x2, colStep);
    } else if (Add32(Add32(x, dx), cols) >= m_canvasCols) {
      Grow(m_resultMat, rowStep, 0, 0, colStep);
      y = Add32(y, rowStep);
    } else {
      Grow(m_resultMat, rowStep, 0, 0, 0);
      y = Add32(y, rowStep);
    }
    m_contentRect.y1 = Add32(m_contentRect.y1, rowStep);
    m_contentRect.y2 = Add32(m_contentRect.y2, rowStep);
  }

  if (Add32(Add32(y, rows), dy) >= m_canvasRows) {
    if (Add32(x, dx) <= 0) {
      Grow(m_resultMat, 0, rowStep, colStep, 0);
      x = Add32(x, colStep);
      m_contentRect.x1 = Add32(m_contentRect.x1, colStep);
      m_contentRect.x2 = Add32(m_contentRect.x2, colStep);
    } else if (Add32(Add32(x, dx), cols) >= m_canvasCols) {
      Grow(m_resultMat, 0, rowStep, 0, colStep);
    } else {
      Grow(m_resultMat, 0, rowStep, 0, 0);
    }
  }

  if (Add32(y, dy) > 0 && Add32(Add32(y, dy), rows) < m_canvasRows) {
    if (Add32(x, dx) <= 0) {
      Grow(m_resultMat, 0, 0, colStep, 0);
      x = Add32(x, colStep);
      m_contentRect.x1 = Add32(m_contentRect.x1, colStep);
      m_contentRect.x2 = Add32(m_contentRect.x2, colStep);
    }
    if (Add32(Add32(x, cols), dx) >= m_canvasCols) Grow(m_resultMat, 0, 0, 0, colStep);
  }

  m_canvasRows = m_resultMat.rows;
  m_canvasCols = m_resultMat.cols;
}

void Stitcher::findCutPoint(cv::Mat* frame) {
  const int rows = frame->rows;
  const int cols = frame->cols;
  const int x = m_framePos.x;
  const int y = m_framePos.y;
  Rect4& box = m_contentRect;
  if (x < box.x1) {
    if (Add32(x, cols) < box.x2) box.x1 = x;
  } else if (x > box.x1 && Add32(x, cols) > box.x2) {
    box.x2 = Add32(x, cols);
  }
  if (y < box.y1) {
    if (Add32(y, rows) < box.y2) box.y1 = y;
  } else if (y > box.y1 && Add32(y, rows) > box.y2) {
    box.y2 = Add32(y, rows);
  }
  m_cutRect = box;
}

bool Stitcher::ChangeStitchingBackground(int c0, int c1, int c2) {
  if (m_curFrame.empty()) return false;
  if (c0 == 0 && c1 == 0 && c2 == 0) return true;
  for (int r = 0; r < m_curFrame.rows; ++r) {
    unsigned char* row = m_curFrame.data + r * m_curFrame.step[0];
    for (int c = 0; c < m_curFrame.cols; ++c) {
      if (row[3 * c] == 0 && row[3 * c + 1] == 0 && row[3 * c + 2] == 0) {
        row[3 * c] = static_cast<unsigned char>(c0 & 255);
        row[3 * c + 1] = static_cast<unsigned char>(c1 & 255);
        row[3 * c + 2] = static_cast<unsigned char>(c2 & 255);
      }
    }
  }
  return true;
}

}  // namespace reference

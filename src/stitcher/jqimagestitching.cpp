#include "jqimagestitching.h"

#include <memory>

#include "jqglobalclass.h"
#include "picture/wrapping.h"
#include "stitcher/acceptance.h"
#include "stitcher/run_state.h"

// The overlap mode, the run state and the overlap bounds stay unset until a run
// starts.
JQImageStitching::JQImageStitching()
    : QObject(nullptr),
      m_pAlgorithm(nullptr),
      m_canvasOrigin(0, 0),
      m_canvasRows(10000),
      m_canvasCols(10000),
      m_frameSize(5000, 5000),
      m_framePos(0, 0),
      m_frameRows(0),
      m_frameCols(0),
      m_lastOffset(0, 0),
      m_frameOffset(0, 0),
      m_bLastFrameAccepted(true),
      m_bStitchStarted(true),
      m_nFrameCount(0),
      m_nReserved(0),
      m_pOutImage(nullptr),
      m_reservedWord(0),
      m_mosaicMin(0, 0),
      m_mosaicMax(0, 0),
      m_reservedPair{0, 0},
      m_pRun(std::make_unique<RunState>()) {
  m_pAlgorithm = new JQStitchingAlgorithm;
}

JQImageStitching::~JQImageStitching() {
  delete m_pOutImage;
  delete m_pAlgorithm;
}

int JQImageStitching::GetCurImageSize() const {
  using jqstitching::WrappingProduct;
  const cv::Size size = GetCurSize();
  return WrappingProduct(WrappingProduct(size.width, size.height), 3);
}

cv::Size JQImageStitching::GetCurSize() const {
  using jqstitching::WrappingDifference;
  return cv::Size(WrappingDifference(m_mosaicMax.x, m_mosaicMin.x),
                  WrappingDifference(m_mosaicMax.y, m_mosaicMin.y));
}

bool JQImageStitching::IsOffsetPointValid() const {
  return jqstitching::EnoughMatches(m_pAlgorithm->m_stitchFlags.matchCount);
}

cv::Point JQImageStitching::GetOffsetPosition() const {
  if (!IsOffsetPointValid()) return cv::Point(0, 0);
  const stitchflags& flags = m_pAlgorithm->m_stitchFlags;
  return cv::Point(flags.offsetX, flags.offsetY);
}

cv::Point JQImageStitching::GetCurrentPosition() const {
  const stitchflags& flags = m_pAlgorithm->m_stitchFlags;
  return cv::Point(flags.positionX, flags.positionY);
}

bool JQImageStitching::IsLastFrameAccepted() const {
  const JQFrameCause cause = m_pRun->verdict.cause;
  return cause == JQFrameCause::kFirstFrame || cause == JQFrameCause::kPlaced;
}

int JQImageStitching::GetFrameCount() const {
  return m_nFrameCount;
}

stitchflags JQImageStitching::GetStitchFlags() const {
  return m_pAlgorithm->m_stitchFlags;
}

cv::Mat JQImageStitching::GetMosaic() const {
  return m_mosaic;
}

cv::Point JQImageStitching::GetContentMin() const {
  return m_mosaicMin;
}

cv::Point JQImageStitching::GetContentMax() const {
  return m_mosaicMax;
}

cv::Rect JQImageStitching::GetPlacedBounds() const {
  return m_pRun->placedBounds;
}

JQFrameVerdict JQImageStitching::GetLastVerdict() const {
  return m_pRun->verdict;
}

void JQImageStitching::RequestStop() {
  m_pRun->stopRequested = true;
}

#include "moc_jqimagestitching.cpp"

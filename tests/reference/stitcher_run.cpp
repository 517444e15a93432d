#include <cstdlib>
#include <opencv2/imgcodecs.hpp>

#include "reference/integer32.h"
#include "reference/stitcher.h"

namespace reference {

int Stitcher::GetCurImageSize() const {
  const cv::Size size = GetCurSize();
  return Mul32(Mul32(size.width, size.height), 3);
}

cv::Size Stitcher::GetCurSize() const {
  return cv::Size(Sub32(m_mosaicMax.x, m_mosaicMin.x), Sub32(m_mosaicMax.y, m_mosaicMin.y));
}

bool Stitcher::IsOffsetPointValid() const {
  return m_algorithm.m_stitchFlags.matchCount > 10;
}

cv::Point Stitcher::GetOffsetPosition() const {
  const stitchflags& flags = m_algorithm.m_stitchFlags;
  return flags.matchCount >= 11 ? cv::Point(flags.offsetX, flags.offsetY) : cv::Point(0, 0);
}

cv::Point Stitcher::GetCurrentPosition() const {
  return cv::Point(m_algorithm.m_stitchFlags.positionX, m_algorithm.m_stitchFlags.positionY);
}

// The smallest rectangle that holds them all, found side by side.
cv::Rect Stitcher::GetPlacedBounds() const {
  if (m_placed.empty()) return cv::Rect();
  int left = m_placed[0].x, top = m_placed[0].y;
  int right = left + m_placed[0].width, bottom = top + m_placed[0].height;
  for (const cv::Rect& frame : m_placed) {
    if (frame.x < left) left = frame.x;
    if (frame.y < top) top = frame.y;
    if (frame.x + frame.width > right) right = frame.x + frame.width;
    if (frame.y + frame.height > bottom) bottom = frame.y + frame.height;
  }
  return cv::Rect(left, top, right - left, bottom - top);
}

bool Stitcher::PassesAcceptance(const cv::Mat& newFrame) const {
  const stitchflags& flags = m_algorithm.m_stitchFlags;
  const int x = std::abs(flags.offsetX);
  const int y = std::abs(flags.offsetY);
  const float d = static_cast<float>(x > y ? x : y);
  const float extent = static_cast<float>(x > y ? newFrame.cols : newFrame.rows);
  const bool farEnough = d > (1 - m_fMaxOverlap) * extent;
  const bool nearEnough = d < (1 - m_fMinOverlap) * extent;
  return farEnough && nearEnough && flags.matchCount >= 11;
}

// The mosaic that the offset driver has just made holds the reference frame alone.
void Stitcher::RememberStart() {
  const stitchflags& flags = m_algorithm.m_stitchFlags;
  m_placed = {cv::Rect(flags.positionX, flags.positionY, m_mosaic.cols / 2, m_mosaic.rows / 2)};
}

void Stitcher::Blend(const cv::Mat& newFrame) {
  stitchflags& flags = m_algorithm.m_stitchFlags;
  const cv::Size size(newFrame.cols / m_algorithm.m_nDetectLevel,
                      newFrame.rows / m_algorithm.m_nDetectLevel);
  const cv::Point place(flags.positionX + flags.offsetX, flags.positionY + flags.offsetY);

  cv::Point position(flags.positionX, flags.positionY);
  m_algorithm.StitchingImage_imageblend(m_mosaic, newFrame, flags, m_mosaicMin, m_mosaicMax,
                                        position, m_mosaicMin, m_mosaicMax, position, m_mosaic,
                                        m_refFrame);
  flags.positionX = position.x;
  flags.positionY = position.y;

  // One frame is added at the top or left where the frame touched that edge.
  const cv::Point moved(place.x <= 0 ? size.width : 0, place.y <= 0 ? size.height : 0);
  for (cv::Rect& frame : m_placed) frame += moved;
  m_placed.push_back(cv::Rect(place + moved, size));
}

_tagJQIMG* Stitcher::Stitching(_tagJQIMG* img, int nOverlapMode, int nDetectLevel,
                               int nCornerBudget) {
  if (img == nullptr) return nullptr;
  m_algorithm.m_pairCount = 0;

  if (!m_pOutImage && m_curFrame.empty() && m_resultMat.empty()) {
    m_nOverlapMode = nOverlapMode;
    m_nStitchState = 1;
    m_algorithm.SetParameter(nDetectLevel, nCornerBudget, nOverlapMode, 1);
    ConvertJQImgToCv8UC3(img, m_curFrame);
    m_algorithm.JudgeImageChannel(m_curFrame, m_curFrame);
    m_pOutImage = std::make_unique<_tagJQIMG>();
    FillRecord(img, m_curFrame);
    m_bStitchStarted = true;
    m_nFrameCount = 0;
    m_nReserved = 0;
    m_refFrame = m_curFrame;
    m_fMinOverlap = 0.1f;
    m_fMaxOverlap = 0.9f;
    m_lastFramePlaced = true;
    return m_pOutImage.get();
  }

  cv::Mat newFrame;
  ConvertJQImgToCv8UC3(img, newFrame);
  m_algorithm.JudgeImageChannel(newFrame, newFrame);
  stitchflags& flags = m_algorithm.m_stitchFlags;
  m_algorithm.StitchingImage_offset(m_nFrameCount, m_refFrame, m_curFrame, newFrame, m_mosaicMin,
                                    m_mosaicMax, m_mosaic, flags);
  if (m_nFrameCount == 0) {
    RememberStart();
    m_nFrameCount = 1;
  }
  m_lastFramePlaced = false;
  if (flags.overlapFlag == 1) {
    m_bLastFrameAccepted = PassesAcceptance(newFrame);
    if (m_bLastFrameAccepted) {
      m_lastFramePlaced = true;
      Blend(newFrame);
      flags.offsetX = 0;
      flags.offsetY = 0;
      ++m_nFrameCount;
    }
  }
  m_curFrame = newFrame;
  FillRecord(img, m_mosaic);
  return m_pOutImage.get();
}

void Stitcher::Report(const std::string& text) {
  m_statusTexts.push_back(text);
  if (m_onStatus) m_onStatus();
}

void Stitcher::slotStartStitching() {
  if (!IsImageSizeMatched(m_fileList)) {
    m_finishedNull.push_back(true);
    m_finishedPicture.push_back(cv::Mat());
    return;
  }
  const std::string count = std::to_string(m_fileList.size());
  m_nFrameCount = 0;
  m_nReserved = 0;
  m_fMinOverlap = 0.1f;
  m_fMaxOverlap = 0.9f;
  m_algorithm.SetParameter(1, 8, 0, 0);
  m_algorithm.m_pairCount = 0;
  m_curFrame = cv::imread(m_fileList[0], 1);
  m_algorithm.JudgeImageChannel(m_curFrame, m_curFrame);
  m_refFrame = m_curFrame;
  m_placed.clear();
  m_lastFramePlaced = true;
  Report("Image Stitching 1/" + count);

  stitchflags& flags = m_algorithm.m_stitchFlags;
  for (std::size_t i = 1; i < m_fileList.size(); ++i) {
    cv::Mat newFrame = cv::imread(m_fileList[i], 1);
    m_algorithm.JudgeImageChannel(newFrame, newFrame);
    m_algorithm.StitchingImage_offset(m_nFrameCount, m_refFrame, m_curFrame, newFrame, m_mosaicMin,
                                      m_mosaicMax, m_mosaic, flags);
    if (m_nFrameCount == 0) {
      RememberStart();
      m_nFrameCount = 1;
    }
    m_lastFramePlaced = false;
    if (flags.overlapFlag == 1 && PassesAcceptance(newFrame)) {
      m_lastFramePlaced = true;
      Blend(newFrame);
      ++m_nFrameCount;
    }
    Report("Image Stitching " + std::to_string(i + 1) + "/" + count);
  }
  Trim();
  m_finishedNull.push_back(false);
  m_finishedPicture.push_back(m_curFrame);
}

}  // namespace reference

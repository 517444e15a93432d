#include "report/plain_run.h"

#include <algorithm>
#include <cstdlib>

#include "jqimageconvert.h"

namespace jqbench {

void PlainRun::Stitching(_tagJQIMG* img, int overlapMode, int detectLevel, int cornerBudget) {
  cv::Mat frame;
  ConvertJQImgToCv8UC3(img, frame);
  m_engine.JudgeImageChannel(frame, frame);
  if (m_current.empty()) {
    m_engine.SetParameter(detectLevel, cornerBudget, overlapMode, 1);
    m_current = frame;
    m_reference = frame;
    m_lastPlaced = true;
    return;
  }
  stitchflags& flags = m_engine.m_stitchFlags;
  m_engine.StitchingImage_offset(m_frames, m_reference, m_current, frame, m_min, m_max, m_mosaic,
                                 flags);
  if (m_frames == 0) m_frames = 1;
  m_lastPlaced = false;
  if (flags.overlapFlag == 1) {
    const int x = std::abs(flags.offsetX), y = std::abs(flags.offsetY);
    const auto extent = static_cast<float>(x > y ? frame.cols : frame.rows);
    const auto shift = static_cast<float>(std::max(x, y));
    m_lastPlaced =
        shift > (1.0f - 0.9f) * extent && shift < (1.0f - 0.1f) * extent && flags.matchCount >= 11;
  }
  if (m_lastPlaced) {
    cv::Point position(flags.positionX, flags.positionY);
    m_engine.StitchingImage_imageblend(m_mosaic, frame, flags, m_min, m_max, position, m_min, m_max,
                                       position, m_mosaic, m_reference);
    flags.positionX = position.x;
    flags.positionY = position.y;
    flags.offsetX = 0;
    flags.offsetY = 0;
    ++m_frames;
  }
  m_current = frame;
}

}  // namespace jqbench

#include "report/same.h"

#include <cstring>

namespace jqbench {

bool SamePixels(const cv::Mat& a, const cv::Mat& b) {
  if (a.size() != b.size() || a.type() != b.type()) return false;
  const size_t bytes = static_cast<size_t>(a.cols) * a.elemSize();
  for (int r = 0; r < a.rows; ++r) {
    if (std::memcmp(a.ptr(r), b.ptr(r), bytes) != 0) return false;
  }
  return true;
}

bool SameFlags(const stitchflags& a, const stitchflags& b) {
  return a.matchCount == b.matchCount && a.offsetX == b.offsetX && a.offsetY == b.offsetY &&
         a.positionX == b.positionX && a.positionY == b.positionY && a.overlapFlag == b.overlapFlag;
}

bool SameRecord(_tagJQIMG a, _tagJQIMG b) {
  a.pixels = nullptr;
  b.pixels = nullptr;
  return std::memcmp(&a, &b, sizeof a) == 0;
}

bool SameRun(const JQImageStitching& library, const reference::Stitcher& plain) {
  return SameRun(library, library.IsLastFrameAccepted(), plain);
}

bool SameRun(const JQImageStitching& library, bool placed, const reference::Stitcher& plain) {
  return SameFlags(library.GetStitchFlags(), plain.m_algorithm.m_stitchFlags) &&
         placed == plain.m_lastFramePlaced && library.GetFrameCount() == plain.m_nFrameCount &&
         library.GetContentMin() == plain.m_mosaicMin &&
         library.GetContentMax() == plain.m_mosaicMax &&
         library.GetPlacedBounds() == plain.GetPlacedBounds() &&
         library.GetOffsetPosition() == plain.GetOffsetPosition() &&
         library.GetCurrentPosition() == plain.GetCurrentPosition() &&
         SamePixels(library.GetMosaic(), plain.m_mosaic);
}

}  // namespace jqbench

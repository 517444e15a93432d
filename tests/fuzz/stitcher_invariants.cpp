#include "stitcher_invariants.h"

#include <algorithm>
#include <cstdint>

#include "require.h"

namespace {

bool IsBlack(const cv::Mat& picture) {
  for (int r = 0; r < picture.rows; ++r) {
    const unsigned char* row = picture.ptr(r);
    const unsigned char* end = row + static_cast<std::size_t>(picture.cols) * picture.elemSize();
    if (std::any_of(row, end, [](unsigned char sample) { return sample != 0; })) return false;
  }
  return true;
}

bool HasBlackSample(const cv::Mat& picture) {
  for (int r = 0; r < picture.rows; ++r) {
    const unsigned char* row = picture.ptr(r);
    const unsigned char* end = row + static_cast<std::size_t>(picture.cols) * picture.elemSize();
    if (std::find(row, end, 0) != end) return true;
  }
  return false;
}

// The mosaic beside the rectangle: above, below, left, right.
bool IsBlackBeside(const cv::Mat& mosaic, const cv::Rect& r) {
  return IsBlack(mosaic.rowRange(0, r.y)) && IsBlack(mosaic.rowRange(r.br().y, mosaic.rows)) &&
         IsBlack(mosaic.colRange(0, r.x)) && IsBlack(mosaic.colRange(r.br().x, mosaic.cols));
}

void RequireSizes(const JQImageStitching& stitcher) {
  const cv::Point low = stitcher.GetContentMin(), high = stitcher.GetContentMax();
  const cv::Size size = stitcher.GetCurSize();
  Require(size == cv::Size(high.x - low.x, high.y - low.y), "the size is that of the content box");
  const std::uint32_t bytes =
      static_cast<std::uint32_t>(size.width) * static_cast<std::uint32_t>(size.height) * 3u;
  Require(static_cast<std::uint32_t>(stitcher.GetCurImageSize()) == bytes,
          "the bytes are those of the size");
  const stitchflags flags = stitcher.GetStitchFlags();
  Require(stitcher.IsOffsetPointValid() == (flags.matchCount > 10),
          "an offset is valid from 11 matches on");
  const cv::Point offset =
      stitcher.IsOffsetPointValid() ? cv::Point(flags.offsetX, flags.offsetY) : cv::Point();
  Require(stitcher.GetOffsetPosition() == offset, "an offset is given when it is valid");
}

}  // namespace

void RequireSound(const JQImageStitching& stitcher) {
  RequireSizes(stitcher);
  // A run that has no mosaic yet may stand beside the mosaic of the run before.
  if (stitcher.GetFrameCount() == 0) return;
  const cv::Mat mosaic = stitcher.GetMosaic();
  const cv::Rect all(0, 0, mosaic.cols, mosaic.rows), bounds = stitcher.GetPlacedBounds();
  Require(!bounds.empty() && (bounds & all) == bounds, "the placed bounds lie in the mosaic");
  Require(IsBlackBeside(mosaic, bounds), "the mosaic is black beside the placed bounds");
  const cv::Point position = stitcher.GetCurrentPosition();
  if (stitcher.IsLastFrameAccepted() && stitcher.GetFrameCount() > 1) {
    Require(bounds.contains(position), "the newest frame lies in the placed bounds");
    Require(!HasBlackSample(mosaic(cv::Rect(position, cv::Size(1, 1)))),
            "the newest frame is not black");
  }
}

#include <opencv2/imgproc.hpp>

#include "blend/growth.h"
#include "blend/kernels/fusion.h"
#include "engine/detect_level.h"
#include "engine/picture_check.h"
#include "engine/workspace.h"
#include "jqstitchingalgorithm.h"

namespace {

// The block that a frame at (x, y) covers of a mosaic of this size.
cv::Rect CoveredBlock(std::int64_t x, std::int64_t y, cv::Size frame, cv::Size mosaic) {
  if (x < 0 || y < 0 || x + frame.width > mosaic.width || y + frame.height > mosaic.height) {
    CV_Error(cv::Error::StsOutOfRange,
             cv::format("a frame of %d x %d at column %lld, row %lld lies outside the mosaic of "
                        "%d x %d",
                        frame.width, frame.height, static_cast<long long>(x),
                        static_cast<long long>(y), mosaic.width, mosaic.height));
  }
  return cv::Rect(static_cast<int>(x), static_cast<int>(y), frame.width, frame.height);
}

bool SameHeader(const cv::Mat& a, const cv::Mat& b) {
  return a.u == b.u && a.data == b.data && a.type() == b.type() && a.size() == b.size() &&
         a.step == b.step;
}

// How many headers on the mosaic's pixels are at hand: the one that came by value, and
// often the caller's own, into which the result goes. With no more than these the pixels
// may be moved, unless the frame shows some of them.
int HeadersAtHand(const cv::Mat& mosaic, const cv::Mat& frame, const cv::Mat& result) {
  if (jqstitching::SharesMemory(mosaic, frame)) return 0;
  return SameHeader(mosaic, result) ? 2 : 1;
}

}  // namespace

void JQStitchingAlgorithm::StitchingImage_imageblend(
    cv::Mat mosaic, cv::Mat frame, stitchflags flags, cv::Point mosaicMin, cv::Point mosaicMax,
    cv::Point, cv::Point& newMosaicMin, cv::Point& newMosaicMax, cv::Point& newPosition,
    cv::Mat& newMosaic, cv::Mat& blendRegion) {
  jqstitching::CheckDetectLevel(m_nDetectLevel);
  jqstitching::CheckPictures(mosaic, frame);
  if (m_nDetectLevel != 1) {
    cv::resize(frame, frame, cv::Size(frame.cols / m_nDetectLevel, frame.rows / m_nDetectLevel),
               1.0, 0.0, cv::INTER_LINEAR);
  }

  const std::int64_t x = std::int64_t{flags.positionX} + flags.offsetX;
  const std::int64_t y = std::int64_t{flags.positionY} + flags.offsetY;
  const jqstitching::Growth growth = jqstitching::GrowthFor(x, y, frame.size(), mosaic.size());
  growth.moveBox(mosaicMin, mosaicMax, frame.size());
  const jqstitching::Borders borders = growth.borders(frame.size());
  const cv::Rect covered = CoveredBlock(x + borders.left, y + borders.top, frame.size(),
                                        jqstitching::SizeWith(borders, mosaic.size()));
  jqstitching::CheckFusionPair(covered.size(), mosaic.type(), frame.size(), frame.type());

  // All memory comes before the first change, and that for the mosaic last: where its
  // pixels are moved, a host's record of them must not be left behind by an error.
  jqstitching::FusionWeights weights(frame, m_workspace.get().fusion);
  const bool mayFail = frame.empty() || jqstitching::FusionWeights::ReadingMayFail(mosaic);
  const int headers = mayFail ? 0 : HeadersAtHand(mosaic, frame, newMosaic);
  if (jqstitching::AddBorders(mosaic, borders, headers)) newMosaic = mosaic;
  cv::Mat block = mosaic(covered);
  jqstitching::FuseImages(block, frame, true, weights);
  outputImageCoordate(mosaicMin, mosaicMax, 0, 0, frame.rows, frame.cols, covered.tl(), mosaicMin,
                      mosaicMax);

  blendRegion = frame;
  newMosaicMin = mosaicMin;
  newMosaicMax = mosaicMax;
  newPosition = covered.tl();
  newMosaic = mosaic;
}

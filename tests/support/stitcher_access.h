#ifndef JQ_TESTS_SUPPORT_STITCHER_ACCESS_H
#define JQ_TESTS_SUPPORT_STITCHER_ACCESS_H

#include "jqglobalclass.h"
#include "jqimagestitching.h"

/// The stitcher's private run state, for tests that compare it with the plain twin
/// or put it into a state that frames reach only after a long run.
namespace inside {

JQStitchingAlgorithm*& Algorithm(JQImageStitching& stitcher);
cv::Point& CanvasOrigin(JQImageStitching& stitcher);
cv::Point& LastOffset(JQImageStitching& stitcher);
cv::Mat& CurFrame(JQImageStitching& stitcher);
bool& LastFrameAccepted(JQImageStitching& stitcher);
bool& StitchStarted(JQImageStitching& stitcher);
std::int32_t& FrameCount(JQImageStitching& stitcher);
std::int32_t& Reserved(JQImageStitching& stitcher);
cv::Mat& RefFrame(JQImageStitching& stitcher);
_tagJQIMG*& OutImage(JQImageStitching& stitcher);
cv::Mat& SpareMat(JQImageStitching& stitcher);
cv::Point& MosaicMin(JQImageStitching& stitcher);
cv::Point& MosaicMax(JQImageStitching& stitcher);
cv::Mat& Mosaic(JQImageStitching& stitcher);
std::int32_t& OverlapMode(JQImageStitching& stitcher);
std::int32_t& StitchState(JQImageStitching& stitcher);
float& MinOverlap(JQImageStitching& stitcher);
float& MaxOverlap(JQImageStitching& stitcher);

/// The record of the last stitch, writable.
inline stitchflags& Flags(JQImageStitching& stitcher) {
  return Algorithm(stitcher)->m_stitchFlags;
}

}  // namespace inside

#endif  // JQ_TESTS_SUPPORT_STITCHER_ACCESS_H

#ifndef JQ_BENCH_REPORT_SAME_H
#define JQ_BENCH_REPORT_SAME_H

#include <opencv2/core.hpp>

#include "jqglobalclass.h"
#include "jqimagestitching.h"
#include "reference/stitcher.h"

namespace jqbench {

/// Size, type and every byte.
bool SamePixels(const cv::Mat& a, const cv::Mat& b);
bool SameFlags(const stitchflags& a, const stitchflags& b);
/// Every byte but the pixel pointer; the pixels are compared as the mosaic.
bool SameRecord(_tagJQIMG a, _tagJQIMG b);
/// All that a host can ask after a frame: record of the stitch, verdict, content
/// box, placed bounds and every pixel of the mosaic.
bool SameRun(const JQImageStitching& library, const reference::Stitcher& plain);
/// The same, with what the library said of its newest frame when that was done: while the
/// next one is being taken, the library has no verdict.
bool SameRun(const JQImageStitching& library, bool placed, const reference::Stitcher& plain);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_SAME_H

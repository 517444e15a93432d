#ifndef JQ_OVERLAP_START_MOSAIC_H
#define JQ_OVERLAP_START_MOSAIC_H

#include <opencv2/core.hpp>

namespace jqstitching {

/// A mosaic with its first frame in it.
struct StartedMosaic {
  cv::Mat mosaic;
  cv::Point position;  ///< the frame's top-left corner
};

/// Black, twice the frame in each direction, with the frame in its middle. An odd size
/// puts the frame one pixel further right or down. Raises `cv::Exception` for frames
/// that are not 8-bit with 1 or 3 channels.
StartedMosaic StartMosaic(const cv::Mat& frame);

}  // namespace jqstitching

#endif  // JQ_OVERLAP_START_MOSAIC_H

#ifndef JQSCOPE_WORK_DRIFT_H
#define JQSCOPE_WORK_DRIFT_H

#include <opencv2/core.hpp>
#include <optional>

namespace jqscope {

/// How far a frame lies from where older ground has it, where the camera comes back over
/// such ground: errors of placement add up along a path, and this shows their sum. Looks at
/// the largest strip of the frame beside the frame placed last that is covered wholly, and
/// compares it with what lies there. Nothing where there is no such strip, or where the two
/// have nothing clear in common.
/// @param frame at the working scale, blue, green, red
/// @param place, lastPlaced of the frame and of the one placed last, in the mosaic
std::optional<cv::Point2d> MeasureDrift(const cv::Mat& mosaic, const cv::Mat& frame,
                                        cv::Point place, const cv::Rect& lastPlaced);

}  // namespace jqscope

#endif  // JQSCOPE_WORK_DRIFT_H

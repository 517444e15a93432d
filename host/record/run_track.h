#ifndef JQHOST_RECORD_RUN_TRACK_H
#define JQHOST_RECORD_RUN_TRACK_H

#include <optional>
#include <vector>

#include "host/record/run_record.h"

namespace jqhost {

/// A stretch of a live run in which the track was lost. Indices into the frames.
struct Loss {
  std::size_t held = 0;   ///< the last frame before it that was placed or tracked
  std::size_t first = 0;  ///< the first lost frame
  std::size_t last = 0;   ///< the last lost frame
  bool regained = false;  ///< whether a later frame was placed or tracked
};

std::vector<Loss> FindLosses(const std::vector<FrameResult>& frames);

/// Where the camera was at a frame, in the coordinates of `FrameResult::position`;
/// nothing where it was not measured by enough matches.
std::vector<std::optional<cv::Point>> CameraPlaces(const std::vector<FrameResult>& frames);

/// Median of the way from one frame to the next, as a share of the frame along the
/// larger component; nothing for fewer than three such ways.
std::optional<double> MedianStep(const RunRecord& record);

}  // namespace jqhost

#endif  // JQHOST_RECORD_RUN_TRACK_H

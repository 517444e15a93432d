#ifndef JQHOST_SIMULATE_CAMERA_PATH_H
#define JQHOST_SIMULATE_CAMERA_PATH_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace jqhost {

enum class PathKind { kRow, kSerpentine, kSpiral, kRandomWalk };

struct PathOptions {
  PathKind kind = PathKind::kSerpentine;
  int count = 60;             ///< frames, 1 or more
  cv::Point step;             ///< pixels from frame to frame, across and down, each 1 or more
  cv::Point direction{1, 0};  ///< of a row: -1, 0 or 1 each, not both 0
  int columns = 0;            ///< frames per line of a serpentine; 0: about a square
  int jumps = 0;              ///< frames taken elsewhere, at most count - 2
  cv::Size frame;             ///< size of one frame; a jump goes beyond it
  std::uint64_t seed = 1;
};

/// Top-left corner of every frame. The first is (0, 0) and others can be
/// negative; `MovePathInside` shifts them.
///
/// - row: straight on in `direction`.
/// - serpentine: lines to the right and back, one step down between them.
/// - spiral: square, outwards, clockwise, starting to the right.
/// - random walk: one of eight directions a frame, 75 to 125 % of a step, never
///   more than 90 degrees away from the frame before.
///
/// A jump moves one frame 1.3 frames aside, where nothing overlaps; the next
/// frame is back on the path. The first and the last frame never jump.
std::vector<cv::Point> CameraPath(const PathOptions& options);

/// The rectangle that all frames cover.
cv::Rect PathBounds(const std::vector<cv::Point>& path, cv::Size frame);

/// Shifts the path so that its bounds are centred in a scene of this size.
void MovePathInside(std::vector<cv::Point>& path, cv::Size frame, cv::Size scene);

}  // namespace jqhost

#endif  // JQHOST_SIMULATE_CAMERA_PATH_H

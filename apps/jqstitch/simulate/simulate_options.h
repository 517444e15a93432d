#ifndef JQSTITCH_SIMULATE_SIMULATE_OPTIONS_H
#define JQSTITCH_SIMULATE_SIMULATE_OPTIONS_H

#include <cstdint>
#include <string>

#include "console/console.h"
#include "host/simulate/camera.h"
#include "host/simulate/camera_path.h"

namespace jqstitch {

/// What `jqstitch simulate` was asked for, as typed.
struct SimulateOptions {
  std::string folder;
  bool force = false;
  std::string image;  ///< picture to pass over; empty: the built-in slide
  std::string scene;  ///< also write the whole scene here; empty: do not
  cv::Size frame{1280, 960};
  int count = 60;
  jqhost::PathKind path = jqhost::PathKind::kSerpentine;
  cv::Point direction{1, 0};
  int columns = 0;
  double step = 20;  ///< percent of the frame, across and down
  int jumps = 0;
  jqhost::CameraEffects effects;
  int jpegQuality = 0;  ///< 0: PNG, or a good one of a video
  bool stream = false;  ///< a video instead of pictures
  std::uint64_t seed = 1;
  bool quiet = false;
};

/// Writes the frames and the truth and says so. Raises `InputError`.
void Simulate(const SimulateOptions& options, Console& console);

}  // namespace jqstitch

#endif  // JQSTITCH_SIMULATE_SIMULATE_OPTIONS_H

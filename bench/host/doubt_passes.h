#ifndef JQ_BENCH_HOST_DOUBT_PASSES_H
#define JQ_BENCH_HOST_DOUBT_PASSES_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace jqbench {

/// How bad the camera is.
enum class Dirt { kClean, kDirty, kFilthy };

/// The frames of a camera that moves over a scene, and where each one truly lies.
struct Pass {
  std::vector<cv::Mat> frames;
  std::vector<cv::Point> corners;
};

enum class Motion {
  kSteady,    ///< steps of 20 to 70 % of a frame along one axis, up to 15 % along the other
  kAnywhere,  ///< up to 110 % along both: many frames do not overlap the one before
};

/// `count` frames of a camera that moves over the scene. Dirty frames differ in exposure and focus,
/// and are darker towards the corners and noisy.
Pass TakePass(const cv::Mat& scene, cv::Size frame, int count, Motion motion, Dirt dirt,
              std::uint64_t seed);

/// A frame that a batch run placed.
struct Placement {
  int frame = 0;
  int before = 0;   ///< the frame placed before it
  cv::Point shift;  ///< measured
  int agreeing = 0;
  int matched = 0;  ///< pairs among which `agreeing` agree
};

/// Stitches the frames with the library's batch run, from files in a folder of its own.
std::vector<Placement> StitchBatch(const std::vector<cv::Mat>& frames, const std::string& folder);

}  // namespace jqbench

#endif  // JQ_BENCH_HOST_DOUBT_PASSES_H

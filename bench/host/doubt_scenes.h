#ifndef JQ_BENCH_HOST_DOUBT_SCENES_H
#define JQ_BENCH_HOST_DOUBT_SCENES_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace jqbench {

/// One kind of subject under the camera.
struct DoubtScene {
  const char* name;
  /// Whether a part of it looks like another part, so that a frame alone does not
  /// tell where it belongs. A right placement on it may be doubted.
  bool repeats;
  /// Paints it, `CV_8UC3`; the same arguments give the same pixels.
  cv::Mat (*paint)(cv::Size size, std::uint64_t seed);
};

/// The scenes that the measure was developed on.
std::vector<DoubtScene> DevelopmentScenes();

/// Other scenes, painted by other code, that the measure is judged on. Nothing was
/// tuned on them.
std::vector<DoubtScene> EvaluationScenes();

}  // namespace jqbench

#endif  // JQ_BENCH_HOST_DOUBT_SCENES_H

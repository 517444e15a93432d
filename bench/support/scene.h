#ifndef JQ_BENCH_SUPPORT_SCENE_H
#define JQ_BENCH_SUPPORT_SCENE_H

#include <cstdint>
#include <opencv2/core.hpp>
#include <vector>

namespace jqbench {

/// What lies under the camera.
enum class Subject {
  kTissue,  ///< texture of every coarseness and strong contrast, as stained tissue
  kSpecks,  ///< small specks on an even ground: consecutive frames differ little
};

/// A still subject and a camera that moves over it. The same arguments give the
/// same pixels in every run.
class Scene {
 public:
  /// The subject repeats after one and a half frames in both directions, so that
  /// a camera can go on for ever. Frames carry sensor noise of a few grey levels
  /// that differs from frame to frame.
  Scene(Subject subject, cv::Size frame, std::uint64_t seed);

  /// The colour frame number `index`, its top-left corner at `position`, which
  /// may be anywhere.
  cv::Mat frame(int index, cv::Point position) const;

 private:
  cv::Size m_frame;
  cv::Size m_period;
  cv::Mat m_subject;
  cv::Mat m_noise;
};

/// Positions of a camera that walks round a square of one and a half frames:
/// steps of 2.7 % of the frame, every seventh one of 18 %, every fifteenth one of
/// 28 %. Frames are placed when more than 10 % has come together, so that placed
/// and not placed ones alternate.
std::vector<cv::Point> WalkLoop(cv::Size frame, int count);

}  // namespace jqbench

#endif  // JQ_BENCH_SUPPORT_SCENE_H

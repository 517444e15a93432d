#ifndef JQ_TESTS_SUPPORT_SMALL_RUN_H
#define JQ_TESTS_SUPPORT_SMALL_RUN_H

#include <vector>

#include "jqimagestitching.h"
#include "support/host_record.h"
#include "support/scenes.h"

/// A camera that moves to and fro over a small scene, so that nearly every frame is
/// placed and the mosaic never grows.
class SmallRun {
 public:
  enum class Steps { kPlaced, kTooSmall };

  SmallRun(int mode, std::uint64_t seed, Steps steps = Steps::kPlaced) : m_mode(mode) {
    RandomSource random(seed);
    const cv::Size size(200, 160);
    const cv::Mat scene =
        mode == 0 ? scenes::Dense(random, 300, 340) : scenes::Quiet(random, 300, 340);
    const int step = steps == Steps::kPlaced ? 36 : 3;
    // Out and back along three sides of a square round the middle.
    const std::vector<cv::Point> way = {{0, 0},  {1, 0}, {1, 1}, {0, 1},
                                        {-1, 1}, {0, 1}, {1, 1}, {1, 0}};
    for (const cv::Point& at : way)
      m_frames.push_back(scenes::Cut(scene, cv::Point(70, 70) + at * step, size));
  }

  /// Hands the next frame over. Whether it was placed.
  bool Step() {
    HostRecord record(m_frames[m_next++ % m_frames.size()]);
    stitcher.Stitching(record.get(), m_mode, 1, 8);
    return stitcher.IsLastFrameAccepted();
  }
  const std::vector<cv::Mat>& frames() const { return m_frames; }

  JQImageStitching stitcher;

 private:
  int m_mode;
  std::size_t m_next = 0;
  std::vector<cv::Mat> m_frames;
};

#endif  // JQ_TESTS_SUPPORT_SMALL_RUN_H

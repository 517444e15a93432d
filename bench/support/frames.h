#ifndef JQ_BENCH_SUPPORT_FRAMES_H
#define JQ_BENCH_SUPPORT_FRAMES_H

#include <opencv2/imgproc.hpp>

#include "support/scene.h"

namespace jqbench {

/// Two colour frames and their grey pictures; the second lies a fifth of a frame
/// further right.
struct FramePair {
  cv::Mat first, second, greyFirst, greySecond;

  explicit FramePair(cv::Size size) {
    const Scene scene(Subject::kTissue, size, 20240506);
    first = scene.frame(0, cv::Point(0, 0));
    second = scene.frame(1, cv::Point(size.width / 5, size.height / 40));
    cv::cvtColor(first, greyFirst, cv::COLOR_RGB2GRAY);
    cv::cvtColor(second, greySecond, cv::COLOR_RGB2GRAY);
  }
};

}  // namespace jqbench

#endif  // JQ_BENCH_SUPPORT_FRAMES_H

// A program that has the engine and no Qt. It registers two views of one picture and
// fuses them.

#include <cstdio>
#include <cstdlib>

#include "jqstitchingalgorithm.h"

#if defined(QT_VERSION) || defined(QT_CORE_LIB)
#error "Qt has come with the engine"
#endif

int main() {
  cv::Mat scene(300, 360, CV_8UC3);
  cv::RNG random(7);
  random.fill(scene, cv::RNG::UNIFORM, 1, 256);
  const cv::Mat first = scene(cv::Rect(0, 0, 300, 280)).clone();
  cv::Mat second = scene(cv::Rect(60, 10, 300, 280)).clone();
  JQStitchingAlgorithm engine;
  int x = 0, y = 0, support = 0;
  engine.ImageMosaicFun(first, second, x, y, support);
  cv::Mat fused;
  engine.TwoImageFusion(first, second, fused);
  std::printf("shift (%d, %d), %d matches\n", x, y, support);
  // Matches agree within 4 pixels.
  const bool near = std::abs(x - 60) <= 4 && std::abs(y - 10) <= 4;
  return near && support >= 11 && fused.size() == first.size() ? 0 : 1;
}

#include "support/frames.h"
#include "support/kernel_bench.h"

namespace {

const bool g_registered = jqbench::RegisterKernel(
    "overlap/extraction", [](benchmark::State& state, cv::Size size, auto& engine) {
      const jqbench::FramePair frames(size);
      engine.m_nImageCols = size.width;
      engine.m_nImageRows = size.height;
      cv::Mat mosaic = cv::Mat::zeros(2 * size.height, 2 * size.width, CV_8UC3);
      const cv::Point origin(size.width / 2, size.height / 2);
      frames.first.copyTo(mosaic(cv::Rect(origin, size)));
      cv::Mat mosaicPart, framePart;
      for (auto _ : state) {
        engine.TakeOutOverLapImageFromMoasicImage(origin, size.width / 25, 0, mosaic, frames.second,
                                                  mosaicPart, framePart);
      }
      jqbench::SetWork(state, size.area(), 2.0 * 6.0 * size.area() * 24 / 25);
    });

}  // namespace

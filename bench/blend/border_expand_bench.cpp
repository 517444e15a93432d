#include "support/frames.h"
#include "support/kernel_bench.h"

namespace {

// Growth by one frame to the right; bytes are those of the new mosaic.
const bool g_registered = jqbench::RegisterKernel(
    "blend/border_expand", [](benchmark::State& state, cv::Size size, auto& engine) {
      const cv::Mat mosaic(2 * size.height, 2 * size.width, CV_8UC3, cv::Scalar::all(9));
      const cv::Point at(size.width / 2, size.height / 2);
      for (auto _ : state) {
        cv::Mat grown;
        cv::Point position, low, high;
        engine.BorderExpand(mosaic, size.height, size.width, size.width * 4 / 5, 0, size.height,
                            size.width, mosaic.cols, mosaic.rows, at, grown, position, at,
                            at + cv::Point(size.width, size.height), low, high);
        benchmark::DoNotOptimize(grown.data);
      }
      jqbench::SetWork(state, 6.0 * size.area(), 18.0 * size.area());
    });

}  // namespace

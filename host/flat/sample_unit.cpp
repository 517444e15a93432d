#include "host/flat/sample_unit.h"

namespace jqhost {
namespace {

// All powers of two, so that nothing is rounded.
float UnitFactor(int fileDepth, int depth, int bits) {
  if (fileDepth == depth) return 1.0F;
  return depth == CV_8U ? 1.0F / 256.0F : static_cast<float>(1 << (bits - 8));
}

}  // namespace

cv::Mat InUnitOfFrames(const cv::Mat& file, int depth, int bits, int channels) {
  cv::Mat samples;
  file.convertTo(samples, CV_32F, UnitFactor(file.depth(), depth, bits));
  if (samples.channels() == channels) return samples;
  cv::Mat fitted(samples.size(), CV_32FC(channels));
  for (int r = 0; r < samples.rows; ++r) {
    const float* from = samples.ptr<float>(r);
    float* to = fitted.ptr<float>(r);
    for (int c = 0; c < samples.cols; ++c) {
      if (channels == 1) {
        to[c] = (from[3 * c] + from[3 * c + 1] + from[3 * c + 2]) / 3.0F;
      } else {
        to[3 * c] = to[3 * c + 1] = to[3 * c + 2] = from[c];
      }
    }
  }
  return fitted;
}

}  // namespace jqhost

#include "registration/zero_samples.h"

#include <algorithm>

namespace jqstitching {

void LiftZeroSamples(cv::Mat& image) {
  const bool single = image.channels() == 1;
  const unsigned char lifted = single ? 1 : 2;
  const size_t visited = static_cast<size_t>(image.cols) * (single ? 1 : 3);
  const size_t bytes = std::min(visited, static_cast<size_t>(image.cols) * image.elemSize());
  for (int r = 0; r < image.rows; ++r) {
    unsigned char* row = image.ptr(r);
    for (size_t i = 0; i < bytes; ++i) {
      if (row[i] == 0) row[i] = lifted;
    }
  }
}

}  // namespace jqstitching

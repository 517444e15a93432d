#ifndef JQHOST_OUTPUT_PIXEL_SOURCE_H
#define JQHOST_OUTPUT_PIXEL_SOURCE_H

#include <opencv2/core.hpp>

namespace jqhost {

/// Pixels that are made when a writer asks for them, so that a large picture is saved
/// without a copy of the whole. 8 bits a sample.
class PixelSource {
 public:
  virtual ~PixelSource() = default;
  virtual cv::Size Size() const = 0;
  /// 3 (red, green, blue in this order, as files have them) or 1 (grey).
  virtual int Channels() const = 0;
  /// Writes the pixels of `area`, which lies inside, into `pixels`, a matrix of that size
  /// and of `Channels` channels that is there already. From several threads at once.
  virtual void Read(const cv::Rect& area, cv::Mat& pixels) const = 0;
};

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_PIXEL_SOURCE_H

#ifndef JQHOST_OUTPUT_HALVED_PIXELS_H
#define JQHOST_OUTPUT_HALVED_PIXELS_H

#include <memory>
#include <vector>

#include "host/output/pixel_source.h"
#include "host/run/stop_token.h"

namespace jqhost {

/// The next smaller level of a pyramid. Each pixel is the mean of 2 x 2 pixels above it,
/// (sum + 2) / 4 for every sample; an odd last row or column counts twice. Made anew
/// whenever it is read.
class HalvedPixels : public PixelSource {
 public:
  /// @param above must outlive this
  explicit HalvedPixels(const PixelSource& above) : m_above(above) {}

  cv::Size Size() const override;
  int Channels() const override { return m_above.Channels(); }
  void Read(const cv::Rect& area, cv::Mat& pixels) const override;

 private:
  const PixelSource& m_above;
};

/// A picture and its reduced levels, down to the first that is no larger than one tile.
/// Levels that are small are kept once they are made, at most 200 MB of them together;
/// the larger ones are made anew from the picture.
class PixelLevels {
 public:
  /// @param first must outlive this
  PixelLevels(const PixelSource& first, int tile);

  /// At least 1.
  int Count() const { return static_cast<int>(m_levels.size()); }
  /// Level 0 is the picture. Reading a level that is to be kept makes it first; a stop
  /// request ends that early, and then its pixels have no meaning.
  const PixelSource& Level(int number, const StopToken& stop);

 private:
  std::vector<const PixelSource*> m_levels;
  std::vector<std::unique_ptr<PixelSource>> m_owned;
  int m_firstKept;
  bool m_isKept = false;
};

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_HALVED_PIXELS_H

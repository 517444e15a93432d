#ifndef JQHOST_OUTPUT_MOSAIC_PIXELS_H
#define JQHOST_OUTPUT_MOSAIC_PIXELS_H

#include <array>
#include <optional>

#include "host/output/pixel_source.h"

namespace jqhost {

/// A part of the mosaic as it lies in memory, with the background coloured where
/// nothing is and a patch (a scale bar) laid over it, block by block.
class MosaicPixels : public PixelSource {
 public:
  /// @param view blue, green, red, or grey; its pixels must outlive this and stay as they are
  /// @param background red, green, blue of pure black pixels; black when not given
  /// @param grey whether the three channels are alike and one of them is enough; they
  ///        stay three where the background has a colour
  MosaicPixels(const cv::Mat& view, const std::optional<std::array<int, 3>>& background, bool grey);

  cv::Size Size() const override { return m_view.size(); }
  int Channels() const override { return m_channels; }
  void Read(const cv::Rect& area, cv::Mat& pixels) const override;

  /// Shows these pixels, of this source's kind, at this place from now on.
  void Cover(const cv::Rect& place, const cv::Mat& patch);

 private:
  cv::Mat m_view;
  int m_channels;
  cv::Vec3b m_background{0, 0, 0};  // red, green, blue
  cv::Rect m_place;
  cv::Mat m_patch;
};

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_MOSAIC_PIXELS_H

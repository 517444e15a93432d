#include "view/reduce_pixels.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace jqscope {

QImage ToTilePixels(const cv::Mat& picture) {
  QImage image(picture.cols, picture.rows, QImage::Format_ARGB32_Premultiplied);
  for (int r = 0; r < picture.rows; ++r) {
    const unsigned char* from = picture.ptr<unsigned char>(r);
    std::uint32_t* to = reinterpret_cast<std::uint32_t*>(image.scanLine(r));
    for (int c = 0; c < picture.cols; ++c, from += 3) {
      const std::uint32_t colour = static_cast<std::uint32_t>(from[0]) |
                                   static_cast<std::uint32_t>(from[1]) << 8 |
                                   static_cast<std::uint32_t>(from[2]) << 16;
      to[c] = colour == 0 ? 0U : colour | 0xff000000U;
    }
  }
  return image;
}

QImage HalvePixels(const QImage& pixels) {
  QImage half(pixels.width() / 2, pixels.height() / 2, QImage::Format_ARGB32_Premultiplied);
  // Two channels are added at once, each with 16 bits of room.
  constexpr std::uint32_t kPair = 0x00ff00ffU;
  for (int r = 0; r < half.height(); ++r) {
    const auto* upper = reinterpret_cast<const std::uint32_t*>(pixels.constScanLine(2 * r));
    const auto* lower = reinterpret_cast<const std::uint32_t*>(pixels.constScanLine(2 * r + 1));
    auto* to = reinterpret_cast<std::uint32_t*>(half.scanLine(r));
    for (int c = 0; c < half.width(); ++c) {
      const std::uint32_t a = upper[2 * c], b = upper[2 * c + 1];
      const std::uint32_t d = lower[2 * c], e = lower[2 * c + 1];
      const std::uint32_t even =
          (a & kPair) + (b & kPair) + (d & kPair) + (e & kPair) + 0x00020002U;
      const std::uint32_t odd =
          (a >> 8 & kPair) + (b >> 8 & kPair) + (d >> 8 & kPair) + (e >> 8 & kPair) + 0x00020002U;
      to[c] = (even >> 2 & kPair) | (odd >> 2 & kPair) << 8;
    }
  }
  return half;
}

void CopyPixels(const QImage& from, QPoint at, QImage& to) {
  const int left = std::max(0, at.x()), right = std::min(to.width(), at.x() + from.width());
  const int top = std::max(0, at.y()), bottom = std::min(to.height(), at.y() + from.height());
  if (left >= right) return;
  for (int r = top; r < bottom; ++r) {
    std::memcpy(to.scanLine(r) + 4 * static_cast<std::ptrdiff_t>(left),
                from.constScanLine(r - at.y()) + 4 * static_cast<std::ptrdiff_t>(left - at.x()),
                4 * static_cast<std::size_t>(right - left));
  }
}

}  // namespace jqscope

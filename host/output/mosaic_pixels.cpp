#include "host/output/mosaic_pixels.h"

#include <algorithm>
#include <cstring>

namespace jqhost {
namespace {

bool HasColour(const std::optional<std::array<int, 3>>& background) {
  return background &&
         ((*background)[0] != (*background)[1] || (*background)[1] != (*background)[2]);
}

// Black is a pixel whose samples are all 0; no frame leaves one.
void ToRgb(const unsigned char* from, int count, const cv::Vec3b& background, unsigned char* to) {
  for (int c = 0; c < count; ++c, from += 3, to += 3) {
    const bool isEmpty = (from[0] | from[1] | from[2]) == 0;
    to[0] = isEmpty ? background[0] : from[2];
    to[1] = isEmpty ? background[1] : from[1];
    to[2] = isEmpty ? background[2] : from[0];
  }
}

void ToGrey(const unsigned char* from, int channels, int count, unsigned char background,
            unsigned char* to) {
  for (int c = 0; c < count; ++c, from += channels) {
    const bool isEmpty = std::all_of(from, from + channels, [](unsigned char s) { return s == 0; });
    to[c] = isEmpty ? background : from[0];
  }
}

// A grey picture on a coloured background.
void GreyToRgb(const unsigned char* from, int count, const cv::Vec3b& background,
               unsigned char* to) {
  for (int c = 0; c < count; ++c, to += 3) {
    for (int k = 0; k < 3; ++k) to[k] = from[c] == 0 ? background[k] : from[c];
  }
}

}  // namespace

MosaicPixels::MosaicPixels(const cv::Mat& view, const std::optional<std::array<int, 3>>& background,
                           bool grey)
    : m_view(view), m_channels((grey || view.channels() == 1) && !HasColour(background) ? 1 : 3) {
  CV_Assert(view.type() == CV_8UC3 || view.type() == CV_8UC1);
  if (!background) return;
  for (int k = 0; k < 3; ++k) {
    m_background[k] = static_cast<unsigned char>((*background)[static_cast<std::size_t>(k)]);
  }
}

void MosaicPixels::Read(const cv::Rect& area, cv::Mat& pixels) const {
  for (int r = 0; r < area.height; ++r) {
    const unsigned char* from =
        m_view.ptr(area.y + r) + m_view.elemSize() * static_cast<std::size_t>(area.x);
    if (m_channels == 1) {
      ToGrey(from, m_view.channels(), area.width, m_background[0], pixels.ptr(r));
    } else if (m_view.channels() == 1) {
      GreyToRgb(from, area.width, m_background, pixels.ptr(r));
    } else {
      ToRgb(from, area.width, m_background, pixels.ptr(r));
    }
  }
  const cv::Rect common = area & m_place;
  if (common.empty()) return;
  m_patch(common - m_place.tl()).copyTo(pixels(common - area.tl()));
}

void MosaicPixels::Cover(const cv::Rect& place, const cv::Mat& patch) {
  m_place = place;
  m_patch = patch;
}

}  // namespace jqhost

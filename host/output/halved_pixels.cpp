#include "host/output/halved_pixels.h"

#include <algorithm>

namespace jqhost {
namespace {

constexpr int kRowsPerPass = 256;
constexpr double kMostKept = 150e6;  // bytes of the largest level; the others add a third

// One row of the result from two rows above it.
void MeanOfRows(const unsigned char* upper, const unsigned char* lower, int columnsAbove,
                int columns, int channels, unsigned char* to) {
  for (int c = 0; c < columns; ++c) {
    const int left = 2 * c * channels;
    const int right = std::min(2 * c + 1, columnsAbove - 1) * channels;
    for (int k = 0; k < channels; ++k) {
      const int sum = upper[left + k] + upper[right + k] + lower[left + k] + lower[right + k];
      *to++ = static_cast<unsigned char>((sum + 2) / 4);
    }
  }
}

// A level that is kept in memory.
class KeptPixels : public PixelSource {
 public:
  KeptPixels(const PixelSource& from, const StopToken& stop)
      : m_pixels(from.Size(), CV_8UC(from.Channels())) {
    for (int y = 0; y < m_pixels.rows && !stop.Requested(); y += kRowsPerPass) {
      const cv::Rect area(0, y, m_pixels.cols, std::min(kRowsPerPass, m_pixels.rows - y));
      cv::Mat rows = m_pixels(area);
      from.Read(area, rows);
    }
  }
  cv::Size Size() const override { return m_pixels.size(); }
  int Channels() const override { return m_pixels.channels(); }
  void Read(const cv::Rect& area, cv::Mat& pixels) const override { m_pixels(area).copyTo(pixels); }

 private:
  cv::Mat m_pixels;
};

double Bytes(const PixelSource& pixels) {
  return 1.0 * pixels.Size().width * pixels.Size().height * pixels.Channels();
}

}  // namespace

cv::Size HalvedPixels::Size() const {
  const cv::Size above = m_above.Size();
  return cv::Size((above.width + 1) / 2, (above.height + 1) / 2);
}

void HalvedPixels::Read(const cv::Rect& area, cv::Mat& pixels) const {
  const cv::Rect all(cv::Point(), m_above.Size());
  const cv::Rect wanted = cv::Rect(area.tl() * 2, area.size() * 2) & all;
  cv::Mat above(wanted.size(), pixels.type());
  m_above.Read(wanted, above);
  for (int r = 0; r < area.height; ++r) {
    MeanOfRows(above.ptr(2 * r), above.ptr(std::min(2 * r + 1, above.rows - 1)), above.cols,
               area.width, pixels.channels(), pixels.ptr(r));
  }
}

PixelLevels::PixelLevels(const PixelSource& first, int tile) : m_levels{&first} {
  while (std::max(m_levels.back()->Size().width, m_levels.back()->Size().height) > tile) {
    m_owned.push_back(std::make_unique<HalvedPixels>(*m_levels.back()));
    m_levels.push_back(m_owned.back().get());
  }
  const auto small = std::find_if(m_levels.begin() + 1, m_levels.end(),
                                  [](const PixelSource* p) { return Bytes(*p) <= kMostKept; });
  m_firstKept = static_cast<int>(small - m_levels.begin());
}

const PixelSource& PixelLevels::Level(int number, const StopToken& stop) {
  if (number >= m_firstKept && !m_isKept) {
    for (std::size_t i = static_cast<std::size_t>(m_firstKept); i < m_levels.size(); ++i) {
      // The level above it in memory, or the picture, is what it is made from.
      const HalvedPixels halved(*m_levels[i - 1]);
      m_owned.push_back(std::make_unique<KeptPixels>(halved, stop));
      m_levels[i] = m_owned.back().get();
    }
    m_isKept = true;
  }
  return *m_levels[static_cast<std::size_t>(number)];
}

}  // namespace jqhost

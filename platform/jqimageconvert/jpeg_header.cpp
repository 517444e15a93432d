#include <vector>

#include "image_header.h"

namespace jqheader {
namespace {

constexpr int kStartOfFrameBaseline = 0xC0;
constexpr int kStartOfFrameProgressive = 0xC2;
constexpr int kHuffmanTables = 0xC4;
constexpr int kEndOfImage = 0xD9;
constexpr int kStartOfScan = 0xDA;
constexpr int kExif = 0xE1;
constexpr unsigned kOrientationTag = 0x0112;

// A 16-bit or 32-bit number at an offset, in the byte order of the tag block;
// `ok` turns false when it lies outside.
class Tags {
 public:
  Tags(const unsigned char* data, std::size_t size) : m_data(data), m_size(size) {
    m_little = size >= 2 && data[0] == 'I' && data[1] == 'I';
    ok = size >= 8 && (m_little || (data[0] == 'M' && data[1] == 'M')) && u16(2) == 42;
  }
  unsigned u16(std::size_t at) {
    if (at + 2 > m_size) {
      ok = false;
      return 0;
    }
    return m_little ? m_data[at] | m_data[at + 1] << 8 : m_data[at] << 8 | m_data[at + 1];
  }
  std::size_t u32(std::size_t at) {
    const std::size_t first = u16(at);
    const std::size_t second = u16(at + 2);
    return m_little ? first | second << 16 : first << 16 | second;
  }

  bool ok;

 private:
  const unsigned char* m_data;
  std::size_t m_size;
  bool m_little;
};

// Whether the tags may swap width and height: orientations 5 to 8, or anything
// written oddly under the orientation's number.
bool maySwap(const unsigned char* data, std::size_t size) {
  Tags tags(data, size);
  if (!tags.ok) return size >= 4;  // not a tag block that we understand
  const std::size_t directory = tags.u32(4);
  const unsigned entries = tags.u16(directory);
  for (unsigned i = 0; i < entries && tags.ok; ++i) {
    const std::size_t entry = directory + 2 + std::size_t{i} * 12;
    if (tags.u16(entry) != kOrientationTag) continue;
    const bool isOneShort = tags.u16(entry + 2) == 3 && tags.u32(entry + 4) == 1;
    const unsigned value = tags.u16(entry + 8);
    if (!isOneShort || value < 1 || value > 4) return true;
  }
  return !tags.ok;
}

// The marker's code, or -1. Fill bytes (0xFF) may precede it.
int readMarker(std::FILE* file) {
  if (std::fgetc(file) != 0xFF) return -1;
  int code = 0xFF;
  while (code == 0xFF) code = std::fgetc(file);
  return code;
}

bool readSegment(std::FILE* file, std::vector<unsigned char>& data) {
  const int high = std::fgetc(file);
  const int low = std::fgetc(file);
  if (high < 0 || low < 0 || (high << 8 | low) < 2) return false;
  data.resize(static_cast<std::size_t>(high << 8 | low) - 2);
  return std::fread(data.data(), 1, data.size(), file) == data.size();
}

bool endsWithEndMark(std::FILE* file) {
  return std::fseek(file, -2, SEEK_END) == 0 && std::fgetc(file) == 0xFF &&
         std::fgetc(file) == kEndOfImage;
}

// Precision 8, grey or three colour components: what every decoder build takes.
cv::Size frameSize(const std::vector<unsigned char>& d) {
  if (d.size() < 6 || d[0] != 8 || (d[5] != 1 && d[5] != 3) ||
      d.size() != 6 + std::size_t{d[5]} * 3)
    return {};
  const int height = d[1] << 8 | d[2];
  const int width = d[3] << 8 | d[4];
  return isPlausible(width, height) ? cv::Size(width, height) : cv::Size();
}

}  // namespace

cv::Size jpegSize(std::FILE* file) {
  if (std::fgetc(file) != 0xFF || std::fgetc(file) != 0xD8) return {};
  // The size counts only when the scan's header and the end mark are there as
  // well; a file cut off in between is for the decoder to judge.
  cv::Size size;
  bool hasTables = false;
  std::vector<unsigned char> data;
  constexpr int kMaxSegments = 1000;
  for (int i = 0; i < kMaxSegments; ++i) {
    const int marker = readMarker(file);
    if (marker < kStartOfFrameBaseline || !readSegment(file, data)) return {};
    if (marker == kStartOfScan) return hasTables && endsWithEndMark(file) ? size : cv::Size();
    if (marker == kHuffmanTables) {
      hasTables = true;
    } else if (marker >= kStartOfFrameBaseline && marker <= kStartOfFrameProgressive) {
      if (size != cv::Size()) return {};
      size = frameSize(data);
      if (size == cv::Size()) return {};
    } else if (marker > kStartOfFrameProgressive && marker < kEndOfImage) {
      return {};  // lossless, arithmetic or hierarchical coding, stray marks
    } else if (marker == kExif && data.size() > 6 && maySwap(data.data() + 6, data.size() - 6)) {
      return {};
    }
  }
  return {};
}

}  // namespace jqheader

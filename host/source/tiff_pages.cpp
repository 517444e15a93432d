#include "host/source/tiff_pages.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>

namespace jqhost {
namespace {

constexpr int kMostPages = 65535;  // a chain that runs in a circle ends here

class TiffReader {
 public:
  explicit TiffReader(const std::string& path) : m_stream(path, std::ios::binary) {}

  // The first directory's place, and whether the file is a TIFF: byte order, then
  // 42, or 43 with 64-bit offsets.
  bool ReadHead(std::uint64_t& directory) {
    std::array<char, 2> order{};
    if (!m_stream.read(order.data(), 2) || order[0] != order[1]) return false;
    if (order[0] != 'I' && order[0] != 'M') return false;
    m_bigEndian = order[0] == 'M';
    std::uint64_t version = 0;
    if (!Read(2, version) || (version != 42 && version != 43)) return false;
    m_wide = version == 43;
    if (m_wide) {
      std::uint64_t sizes = 0;
      if (!Read(4, sizes)) return false;
    }
    return Read(m_wide ? 8 : 4, directory);
  }

  // Goes on to the next directory's place; false at one that is cut short.
  bool ReadNext(std::uint64_t& directory) {
    std::uint64_t entries = 0;
    m_stream.seekg(static_cast<std::streamoff>(directory));
    if (!Read(m_wide ? 8 : 2, entries) || entries > 65535) return false;
    m_stream.seekg(static_cast<std::streamoff>(entries * (m_wide ? 20 : 12)), std::ios::cur);
    return Read(m_wide ? 8 : 4, directory);
  }

 private:
  bool Read(int bytes, std::uint64_t& value) {
    std::array<char, 8> raw{};
    if (!m_stream.read(raw.data(), bytes)) return false;
    if (!m_bigEndian) std::reverse(raw.begin(), raw.begin() + bytes);
    value = 0;
    for (int i = 0; i < bytes; ++i) value = value << 8 | static_cast<unsigned char>(raw[i]);
    return true;
  }

  std::ifstream m_stream;
  bool m_bigEndian = false;
  bool m_wide = false;
};

}  // namespace

int CountTiffPages(const std::string& path) {
  TiffReader reader(path);
  std::uint64_t directory = 0;
  if (!reader.ReadHead(directory)) return 0;
  int pages = 0;
  while (directory != 0 && pages < kMostPages) {
    ++pages;
    if (!reader.ReadNext(directory)) break;
  }
  return pages;
}

}  // namespace jqhost

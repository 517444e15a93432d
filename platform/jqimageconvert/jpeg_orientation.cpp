#include "jpeg_parts.h"

namespace jqheader {
namespace {

constexpr unsigned kOrientationTag = 0x0112;
constexpr unsigned kShort = 3;

// Numbers at an offset, in the byte order of the block; `ok` turns false when one
// lies outside.
class Tags {
 public:
  explicit Tags(Bytes bytes) : m_bytes(bytes) {
    m_little = bytes.size >= 2 && bytes[0] == 'I' && bytes[1] == 'I';
    const bool big = bytes.size >= 2 && bytes[0] == 'M' && bytes[1] == 'M';
    ok = (m_little || big) && u16(2) == 42;
  }
  unsigned u16(std::size_t at) {
    if (m_bytes.size < 2 || at > m_bytes.size - 2) {
      ok = false;
      return 0;
    }
    return m_little ? m_bytes[at] | m_bytes[at + 1] << 8 : m_bytes[at] << 8 | m_bytes[at + 1];
  }
  std::size_t u32(std::size_t at) {
    const std::size_t first = u16(at);
    const std::size_t second = u16(at + 2);
    return m_little ? first | second << 16 : first << 16 | second;
  }

  bool ok = true;

 private:
  Bytes m_bytes;
  bool m_little;
};

}  // namespace

bool maySwapSides(Bytes bytes) {
  Tags tags(bytes);
  if (!tags.ok) return true;
  const std::size_t directory = tags.u32(4);
  const unsigned entries = tags.u16(directory);
  for (unsigned i = 0; i < entries && tags.ok; ++i) {
    const std::size_t entry = directory + 2 + std::size_t{i} * 12;
    if (tags.u16(entry) != kOrientationTag) continue;
    const bool isOneShort = tags.u16(entry + 2) == kShort && tags.u32(entry + 4) == 1;
    const unsigned value = tags.u16(entry + 8);
    if (!isOneShort || value < 1 || value > 4) return true;
  }
  return !tags.ok;
}

}  // namespace jqheader

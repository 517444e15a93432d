#ifndef JQHOST_SOURCE_HEADER_BYTES_H
#define JQHOST_SOURCE_HEADER_BYTES_H

#include <array>
#include <cstdint>
#include <cstring>
#include <istream>
#include <optional>

namespace jqhost {

/// Reads numbers at given places of a file. Past the end, or where the file cannot
/// be read, numbers are 0 and `Good` is false from then on.
class HeaderBytes {
 public:
  explicit HeaderBytes(std::istream& file) : m_file(file) {}

  bool Good() const { return m_good; }

  /// An unsigned number of `bytes` bytes, at most 8.
  std::uint64_t Big(std::uint64_t at, int bytes) { return Number(at, bytes, true); }
  std::uint64_t Little(std::uint64_t at, int bytes) { return Number(at, bytes, false); }

  /// Whether the text stands there.
  bool Is(std::uint64_t at, const char* text) {
    std::array<char, 16> bytes{};
    const std::size_t length = std::strlen(text);
    return Read(at, bytes.data(), length) && std::memcmp(bytes.data(), text, length) == 0;
  }

 private:
  bool Read(std::uint64_t at, char* bytes, std::size_t count) {
    constexpr std::uint64_t kFar = std::uint64_t{1} << 62;
    if (at > kFar) return m_good = false;
    m_file.clear();
    m_file.seekg(static_cast<std::streamoff>(at));
    m_file.read(bytes, static_cast<std::streamsize>(count));
    const bool read = m_file.gcount() == static_cast<std::streamsize>(count);
    m_good = m_good && read;
    return read;
  }

  std::uint64_t Number(std::uint64_t at, int bytes, bool bigFirst) {
    std::array<char, 8> raw{};
    if (!Read(at, raw.data(), static_cast<std::size_t>(bytes))) return 0;
    std::uint64_t value = 0;
    for (int i = 0; i < bytes; ++i) {
      const auto byte = static_cast<unsigned char>(raw[bigFirst ? i : bytes - 1 - i]);
      value = value << 8 | byte;
    }
    return value;
  }

  std::istream& m_file;
  bool m_good = true;
};

}  // namespace jqhost

#endif  // JQHOST_SOURCE_HEADER_BYTES_H

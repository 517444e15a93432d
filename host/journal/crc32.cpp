#include "host/journal/crc32.h"

#include <array>

namespace jqhost {
namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320;  // 0x04C11DB7 with its bits turned round

constexpr std::array<std::uint32_t, 256> MakeTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t value = byte;
    for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1) != 0 ? kPolynomial : 0);
    table[byte] = value;
  }
  return table;
}

constexpr std::array<std::uint32_t, 256> kTable = MakeTable();

}  // namespace

std::uint32_t Crc32(const void* bytes, std::size_t size) {
  const unsigned char* next = static_cast<const unsigned char*>(bytes);
  std::uint32_t value = 0xFFFFFFFF;
  for (std::size_t i = 0; i < size; ++i) value = (value >> 8) ^ kTable[(value ^ next[i]) & 0xFF];
  return value ^ 0xFFFFFFFF;
}

}  // namespace jqhost

#include <array>
#include <cstring>

#include "image_header.h"

namespace jqheader {
namespace {

using Table = std::array<std::uint32_t, 256>;

constexpr Table makeTable() {
  Table table{};
  for (std::uint32_t i = 0; i < 256; ++i) {
    std::uint32_t c = i;
    for (int bit = 0; bit < 8; ++bit) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
    table[i] = c;
  }
  return table;
}

constexpr Table kTable = makeTable();

std::uint32_t addToChecksum(std::uint32_t crc, const unsigned char* data, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) crc = kTable[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
  return crc;
}

std::uint32_t bigEndian(const unsigned char* p) {
  return std::uint32_t{p[0]} << 24 | std::uint32_t{p[1]} << 16 | std::uint32_t{p[2]} << 8 | p[3];
}

bool readBytes(std::FILE* file, unsigned char* to, std::size_t size) {
  return std::fread(to, 1, size, file) == size;
}

// Length, name, data, checksum of name and data. The first bytes of the data are
// kept.
struct Chunk {
  std::uint32_t length = 0;
  char name[5] = {};
  unsigned char head[13] = {};

  bool is(const char* other) const { return std::strcmp(name, other) == 0; }
};

bool readChunk(std::FILE* file, Chunk& chunk) {
  unsigned char start[8];
  if (!readBytes(file, start, sizeof start)) return false;
  chunk = Chunk();
  chunk.length = bigEndian(start);
  std::memcpy(chunk.name, start + 4, 4);
  std::uint32_t crc = addToChecksum(~0u, start + 4, 4);
  unsigned char block[16384];
  for (std::uint32_t done = 0; done < chunk.length;) {
    const std::uint32_t left = chunk.length - done;
    const std::uint32_t part = left < sizeof block ? left : std::uint32_t{sizeof block};
    if (!readBytes(file, block, part)) return false;
    if (done == 0)
      std::memcpy(chunk.head, block, part < sizeof chunk.head ? part : sizeof chunk.head);
    crc = addToChecksum(crc, block, part);
    done += part;
  }
  unsigned char stored[4];
  return readBytes(file, stored, sizeof stored) && bigEndian(stored) == ~crc;
}

}  // namespace

cv::Size pngSize(std::FILE* file) {
  static const unsigned char kSignature[8] = {0x89, 'P', 'N', 'G', 13, 10, 26, 10};
  unsigned char signature[8];
  if (!readBytes(file, signature, sizeof signature) ||
      std::memcmp(signature, kSignature, sizeof signature) != 0)
    return {};

  Chunk chunk;
  if (!readChunk(file, chunk) || !chunk.is("IHDR") || chunk.length != 13) return {};
  const std::int64_t width = bigEndian(chunk.head);
  const std::int64_t height = bigEndian(chunk.head + 4);
  if (!isPlausible(width, height)) return {};

  bool hasPixels = false;
  while (readChunk(file, chunk)) {
    if (chunk.is("IEND"))
      return hasPixels ? cv::Size(static_cast<int>(width), static_cast<int>(height)) : cv::Size();
    // eXIf can hold an orientation; acTL and its like make the first picture
    // something else than the header says in some decoders.
    if (chunk.is("IHDR") || chunk.is("eXIf") || chunk.is("acTL")) return {};
    if (chunk.is("IDAT")) hasPixels = true;
  }
  return {};
}

}  // namespace jqheader

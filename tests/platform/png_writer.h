#ifndef JQ_TESTS_PLATFORM_PNG_WRITER_H
#define JQ_TESTS_PLATFORM_PNG_WRITER_H

#include <cstdint>
#include <string>
#include <vector>

/// PNG files put together by hand: every chunk gets its right checksum, whatever is
/// in it.
namespace png {

using Bytes = std::vector<unsigned char>;

inline void PutBigEndian(Bytes& to, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8)
    to.push_back(static_cast<unsigned char>(value >> shift));
}

inline Bytes Joined(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

inline std::uint32_t Crc(const Bytes& bytes) {
  std::uint32_t crc = 0xFFFFFFFFU;
  for (const unsigned char byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320U : 0U);
  }
  return ~crc;
}

inline Bytes Chunk(const std::string& name, const Bytes& content) {
  Bytes summed(name.begin(), name.end());
  summed.insert(summed.end(), content.begin(), content.end());
  Bytes chunk;
  PutBigEndian(chunk, static_cast<std::uint32_t>(content.size()));
  chunk.insert(chunk.end(), summed.begin(), summed.end());
  PutBigEndian(chunk, Crc(summed));
  return chunk;
}

inline Bytes Signature() {
  return {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
}

struct Header {
  std::uint32_t width = 4;
  std::uint32_t height = 3;
  int depth = 8;
  int colourType = 2;
  int compression = 0;
  int filter = 0;
  int interlace = 0;
};

inline Bytes HeaderContent(const Header& header) {
  Bytes content;
  PutBigEndian(content, header.width);
  PutBigEndian(content, header.height);
  for (const int field :
       {header.depth, header.colourType, header.compression, header.filter, header.interlace})
    content.push_back(static_cast<unsigned char>(field));
  return content;
}

/// `height` lines of a filter byte and `lineBytes` samples.
inline Bytes Lines(int height, int lineBytes, int filter = 0, int sample = 90) {
  Bytes lines;
  for (int y = 0; y < height; ++y) {
    lines.push_back(static_cast<unsigned char>(filter));
    lines.insert(lines.end(), static_cast<std::size_t>(lineBytes),
                 static_cast<unsigned char>(sample));
  }
  return lines;
}

inline std::uint32_t Adler(const Bytes& bytes) {
  std::uint32_t a = 1, b = 0;
  for (const unsigned char byte : bytes) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  return b << 16 | a;
}

/// A compressed stream that stores its bytes as they are, in one block.
inline Bytes Stored(const Bytes& bytes) {
  const auto size = static_cast<unsigned>(bytes.size());
  Bytes start = {0x78, 0x01, 0x01};
  for (const unsigned half : {size, ~size}) {
    start.push_back(static_cast<unsigned char>(half));
    start.push_back(static_cast<unsigned char>(half >> 8));
  }
  Bytes stream = Joined({start, bytes});
  PutBigEndian(stream, Adler(bytes));
  return stream;
}

/// A compressed stream of one block with the given bits, first bit first.
inline Bytes FromBits(const std::string& bits) {
  Bytes stream = {0x78, 0x01};
  for (std::size_t i = 0; i < bits.size(); ++i) {
    if (i % 8 == 0) stream.push_back(0);
    if (bits[i] == '1') stream.back() = static_cast<unsigned char>(stream.back() | 1 << i % 8);
  }
  PutBigEndian(stream, 1);
  return stream;
}

inline Bytes End() {
  return Chunk("IEND", {});
}

/// Header, data and end mark.
inline Bytes Whole(const Header& header, const Bytes& data) {
  return Joined({Signature(), Chunk("IHDR", HeaderContent(header)), Chunk("IDAT", data), End()});
}

}  // namespace png

#endif  // JQ_TESTS_PLATFORM_PNG_WRITER_H

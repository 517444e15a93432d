#include "jpeg_parts.h"

#include "image_header.h"

namespace jqheader {

bool addQuantisation(Bytes s, JpegParts& parts) {
  std::size_t at = 0;
  while (at < s.size) {
    const int precision = s[at] >> 4, slot = s[at] & 15;
    const std::size_t length = precision == 0 ? 64 : 128;
    if (precision > 1 || slot > 3 || s.size - at - 1 < length) return false;
    parts.quantisation[slot] = true;
    at += 1 + length;
  }
  return true;
}

bool addHuffman(Bytes s, JpegParts& parts) {
  std::size_t at = 0;
  while (at < s.size) {
    const int kind = s[at] >> 4, slot = s[at] & 15;
    if (kind > 1 || slot > 3 || s.size - at - 1 < 16) return false;
    // Codes of every length must fit beside the shorter ones; the code of ones alone
    // is not used.
    int symbols = 0;
    long room = 1;
    for (int length = 1; length <= 16; ++length) {
      const int count = s[at + length];
      room = 2 * room - count;
      symbols += count;
      if (room < 1) return false;
    }
    if (symbols == 0 || symbols > 256 || s.size - at - 17 < static_cast<std::size_t>(symbols))
      return false;
    for (int k = 0; kind == 0 && k < symbols; ++k) {
      if (s[at + 17 + k] > 15) return false;  // bits of a difference
    }
    parts.huffman[kind][slot] = true;
    at += 17 + symbols;
  }
  return true;
}

bool addFrame(Bytes s, JpegParts& parts) {
  if (parts.components != 0 || s.size < 6 || s[0] != 8) return false;
  const int components = s[5];
  if ((components != 1 && components != 3) || s.size != 6 + std::size_t{3} * components)
    return false;
  const int height = s[1] << 8 | s[2];
  const int width = s[3] << 8 | s[4];
  if (!isPlausible(width, height)) return false;
  for (int k = 0; k < components; ++k) {
    const unsigned char* c = s.data + 6 + 3 * k;
    const int across = c[1] >> 4, down = c[1] & 15;
    // The usual samplings: the first component full or double, the others single.
    if (across < 1 || across > 2 || down < 1 || down > 2) return false;
    if (k > 0 && (across != 1 || down != 1)) return false;
    if (c[2] > 3) return false;
    for (int other = 0; other < k; ++other) {
      if (parts.component[other].id == c[0]) return false;
    }
    parts.component[k] = {c[0], c[2]};
  }
  parts.components = components;
  parts.size = cv::Size(width, height);
  return true;
}

bool isWholeScan(Bytes s, const JpegParts& parts) {
  const std::size_t count = static_cast<std::size_t>(parts.components);
  if (count == 0 || s.size != 4 + 2 * count || s[0] != count) return false;
  for (std::size_t k = 0; k < count; ++k) {
    const int id = s[1 + 2 * k], direct = s[2 + 2 * k] >> 4, alternating = s[2 + 2 * k] & 15;
    if (id != parts.component[k].id || direct > 3 || alternating > 3) return false;
    if (!parts.huffman[0][direct] || !parts.huffman[1][alternating]) return false;
    if (!parts.quantisation[parts.component[k].quantisation]) return false;
  }
  return s[1 + 2 * count] == 0 && s[2 + 2 * count] == 63 && s[3 + 2 * count] == 0;
}

}  // namespace jqheader

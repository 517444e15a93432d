#include <cstring>
#include <vector>

#include "image_header.h"
#include "jpeg_parts.h"

namespace jqheader {
namespace {

constexpr int kFrameBaseline = 0xC0;
constexpr int kHuffman = 0xC4;
constexpr int kFirstRestart = 0xD0;
constexpr int kLastRestart = 0xD7;
constexpr int kEndOfImage = 0xD9;
constexpr int kScan = 0xDA;
constexpr int kQuantisation = 0xDB;
constexpr int kRestartInterval = 0xDD;
constexpr int kFile = 0xE0;
constexpr int kTags = 0xE1;
constexpr int kComment = 0xFE;

std::vector<unsigned char> readAll(std::FILE* file) {
  constexpr long kMost = 256L << 20;
  if (std::fseek(file, 0, SEEK_END) != 0) return {};
  const long size = std::ftell(file);
  if (size <= 0 || size > kMost || std::fseek(file, 0, SEEK_SET) != 0) return {};
  std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
  if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) return {};
  return bytes;
}

// Whether compressed data without any mark but restarts runs to the end mark, which
// ends the file.
bool isPlainData(Bytes data) {
  const unsigned char* at = data.data;
  const unsigned char* end = data.data + data.size;
  for (;;) {
    at = static_cast<const unsigned char*>(
        std::memchr(at, 0xFF, static_cast<std::size_t>(end - at)));
    if (at == nullptr || end - at < 2) return false;
    const int mark = at[1];
    at += 2;
    if (mark == kEndOfImage) return at == end;
    if (mark != 0 && (mark < kFirstRestart || mark > kLastRestart)) return false;
  }
}

bool addSegment(int mark, Bytes segment, JpegParts& parts) {
  switch (mark) {
    case kFrameBaseline:
      return addFrame(segment, parts);
    case kHuffman:
      return addHuffman(segment, parts);
    case kQuantisation:
      return addQuantisation(segment, parts);
    case kRestartInterval:
      return segment.size == 2;
    case kTags:
      return segment.size > 6 && !maySwapSides({segment.data + 6, segment.size - 6});
    case kFile:
    case kComment:
      return true;
    default:
      return false;
  }
}

}  // namespace

cv::Size jpegSize(std::FILE* file) {
  const std::vector<unsigned char> bytes = readAll(file);
  if (bytes.size() < 4 || bytes[0] != 0xFF || bytes[1] != 0xD8) return {};
  JpegParts parts;
  std::size_t at = 2;
  // A mark, then a length that counts itself, then the segment.
  while (at + 4 <= bytes.size() && bytes[at] == 0xFF) {
    const int mark = bytes[at + 1];
    const std::size_t length = static_cast<std::size_t>(bytes[at + 2] << 8 | bytes[at + 3]);
    if (length < 2 || length > bytes.size() - at - 2) return {};
    const Bytes segment{&bytes[at + 2] + 2, length - 2};
    at += 2 + length;
    if (mark == kScan) {
      const bool sound =
          isWholeScan(segment, parts) && isPlainData({bytes.data() + at, bytes.size() - at});
      return sound ? parts.size : cv::Size();
    }
    if (!addSegment(mark, segment, parts)) return {};
  }
  return {};
}

}  // namespace jqheader

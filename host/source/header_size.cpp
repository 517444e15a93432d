#include "host/source/header_size.h"

#include <cctype>
#include <string>

#include "host/source/header_bytes.h"

namespace jqhost {
namespace {

using Size = std::optional<HeaderSize>;

// A marker is FF and its code; most carry their length, which counts itself. The
// frame headers C0 to CF, without three other markers among them, hold the size.
Size Jpeg(HeaderBytes& bytes) {
  constexpr int kMostSegments = 10000;
  std::uint64_t at = 2;
  for (int i = 0; i < kMostSegments && bytes.Good(); ++i) {
    if (bytes.Big(at, 1) != 0xff) return std::nullopt;
    const std::uint64_t code = bytes.Big(at + 1, 1);
    if (code == 0xff) {  // a fill byte
      ++at;
      continue;
    }
    const bool isFrame =
        code >= 0xc0 && code <= 0xcf && code != 0xc4 && code != 0xc8 && code != 0xcc;
    if (isFrame) return HeaderSize{bytes.Big(at + 7, 2), bytes.Big(at + 5, 2)};
    const bool isBare = code == 0x01 || (code >= 0xd0 && code <= 0xd8);
    at += isBare ? 2 : 2 + bytes.Big(at + 2, 2);
  }
  return std::nullopt;
}

// The entries of tag 256 (width) and 257 (height), of 16, 32 or 64 bits, in the page's
// directory; each directory ends with the place of the next.
Size Tiff(HeaderBytes& bytes, bool bigFirst, int page) {
  const auto number = [&](std::uint64_t at, int count) {
    return bigFirst ? bytes.Big(at, count) : bytes.Little(at, count);
  };
  const std::uint64_t version = number(2, 2);
  if (version != 42 && version != 43) return std::nullopt;
  const bool isBig = version == 43;
  const auto entriesOf = [&](std::uint64_t directory) { return number(directory, isBig ? 8 : 2); };
  std::uint64_t directory = isBig ? number(8, 8) : number(4, 4);
  for (int i = 1; i < page && directory != 0 && bytes.Good(); ++i) {
    const std::uint64_t count = entriesOf(directory);
    directory =
        isBig ? number(directory + 8 + 20 * count, 8) : number(directory + 2 + 12 * count, 4);
  }
  if (directory == 0) return std::nullopt;
  const std::uint64_t entries = entriesOf(directory);
  constexpr std::uint64_t kMostEntries = 4096;
  HeaderSize size;
  for (std::uint64_t i = 0; i < entries && i < kMostEntries && bytes.Good(); ++i) {
    const std::uint64_t at = directory + (isBig ? 8 + 20 * i : 2 + 12 * i);
    const std::uint64_t tag = number(at, 2), type = number(at + 2, 2);
    const int width = type == 3 ? 2 : type == 4 ? 4 : type == 16 ? 8 : 0;
    if ((tag != 256 && tag != 257) || width == 0) continue;
    (tag == 256 ? size.width : size.height) = number(at + (isBig ? 12 : 8), width);
  }
  return size;
}

// Rows may be counted from the top, which a negative height says.
Size Bmp(HeaderBytes& bytes) {
  if (bytes.Little(14, 4) == 12) return HeaderSize{bytes.Little(18, 2), bytes.Little(20, 2)};
  const auto magnitude = [&bytes](std::uint64_t at) {
    const auto value = static_cast<std::int64_t>(static_cast<std::int32_t>(bytes.Little(at, 4)));
    return static_cast<std::uint64_t>(value < 0 ? -value : value);
  };
  return HeaderSize{magnitude(18), magnitude(22)};
}

Size Webp(HeaderBytes& bytes) {
  if (bytes.Is(12, "VP8X")) return HeaderSize{bytes.Little(24, 3) + 1, bytes.Little(27, 3) + 1};
  if (bytes.Is(12, "VP8L")) {
    const std::uint64_t bits = bytes.Little(21, 4);
    return HeaderSize{(bits & 0x3fff) + 1, (bits >> 14 & 0x3fff) + 1};
  }
  if (bytes.Is(12, "VP8 ")) {
    return HeaderSize{bytes.Little(26, 2) & 0x3fff, bytes.Little(28, 2) & 0x3fff};
  }
  return std::nullopt;
}

// Numbers in digits between white space, with comments from # to the line's end.
Size Pnm(HeaderBytes& bytes) {
  constexpr std::uint64_t kLongest = 4096;
  std::uint64_t numbers[2] = {0, 0};
  std::uint64_t at = 2;
  for (std::uint64_t& number : numbers) {
    bool comment = false;
    int c = static_cast<int>(bytes.Big(at, 1));
    while (bytes.Good() && at < kLongest && (comment || std::isspace(c) != 0 || c == '#')) {
      comment = (comment || c == '#') && c != '\n';
      c = static_cast<int>(bytes.Big(++at, 1));
    }
    for (int digits = 0; bytes.Good() && std::isdigit(c) != 0 && digits < 18; ++digits) {
      number = 10 * number + static_cast<std::uint64_t>(c - '0');
      c = static_cast<int>(bytes.Big(++at, 1));
    }
  }
  return HeaderSize{numbers[0], numbers[1]};
}

// Boxes of length and name: the signature of 12 bytes, the file type, and then the
// header box, which starts with the box of the size.
Size Jpeg2000(HeaderBytes& bytes) {
  const std::uint64_t header = 12 + bytes.Big(12, 4);
  if (!bytes.Is(header + 4, "jp2h") || !bytes.Is(header + 12, "ihdr")) return std::nullopt;
  return HeaderSize{bytes.Big(header + 20, 4), bytes.Big(header + 16, 4)};
}

Size Any(HeaderBytes& bytes, int page) {
  if (bytes.Is(0, "\x89PNG")) return HeaderSize{bytes.Big(16, 4), bytes.Big(20, 4)};
  if (bytes.Big(0, 2) == 0xffd8) return Jpeg(bytes);
  if (bytes.Is(0, "II")) return Tiff(bytes, false, page);
  if (bytes.Is(0, "MM")) return Tiff(bytes, true, page);
  if (bytes.Is(0, "BM")) return Bmp(bytes);
  if (bytes.Is(0, "RIFF") && bytes.Is(8, "WEBP")) return Webp(bytes);
  if (bytes.Is(4, "jP  ")) return Jpeg2000(bytes);
  if (bytes.Big(0, 4) == 0x59a66a95) return HeaderSize{bytes.Big(4, 4), bytes.Big(8, 4)};
  const std::uint64_t second = bytes.Big(1, 1);
  if (bytes.Is(0, "P") && ((second >= '1' && second <= '6') || second == 'F' || second == 'f')) {
    return Pnm(bytes);
  }
  return std::nullopt;
}

}  // namespace

std::optional<HeaderSize> ReadHeaderSize(std::istream& file, int page) {
  HeaderBytes bytes(file);
  const Size size = Any(bytes, page);
  if (!bytes.Good() || !size || size->width == 0 || size->height == 0) return std::nullopt;
  return size;
}

}  // namespace jqhost

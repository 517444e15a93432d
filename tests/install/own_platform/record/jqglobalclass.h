#ifndef JQGLOBALCLASS_H
#define JQGLOBALCLASS_H

#include <cstdint>

// The record of this host: the fields that the stitcher needs where it needs them, and
// this host's own fields round them.
#pragma pack(push, 1)
struct _tagJQIMG {
  char camera[12];
  std::uint16_t width;
  std::uint16_t height;
  std::int32_t bytesPerLine;
  std::uint8_t format;
  std::uint8_t gain;
  std::uint8_t channels;
  std::uint8_t bytesPerChannel;
  std::uint64_t exposure;
  std::uint32_t bufferSize;
  std::uint32_t temperature;
  std::uint64_t frameNumber;
  unsigned char* pixels;
  double stage[3];
  char note[944];
};
#pragma pack(pop)

static_assert(sizeof(_tagJQIMG) == 1024, "the record is exactly 1024 bytes");

#endif  // JQGLOBALCLASS_H

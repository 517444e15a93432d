#ifndef JQGLOBALCLASS_H
#define JQGLOBALCLASS_H

#include <cstddef>
#include <cstdint>

/// A raw image as the host's modules hand it to each other: 1024 bytes, little
/// endian. Only the named fields are read or written here; the reserved bytes
/// belong to the host and are copied along untouched.
struct _tagJQIMG {
  std::uint8_t reserved0[12];
  std::uint16_t width;        ///< pixels
  std::uint16_t height;       ///< pixels
  std::int32_t bytesPerLine;  ///< from the start of one line to the next
  std::uint8_t format;        ///< 0: raw interleaved samples
  std::uint8_t reserved1;
  std::uint8_t channels;         ///< 1 grey, 3 blue-green-red, 4 blue-green-red-alpha
  std::uint8_t bytesPerChannel;  ///< 1, or 2 (little endian)
  std::uint8_t reserved2[8];
  std::uint32_t bufferSize;  ///< bytes behind `pixels`
  std::uint8_t reserved3[12];
  unsigned char* pixels;  ///< first sample of the first line; not owned
  std::uint8_t reserved4[968];
};

static_assert(sizeof(void*) == 8, "the record's layout is that of a 64-bit host");
static_assert(sizeof(_tagJQIMG) == 1024, "the record is exactly 1024 bytes");
static_assert(offsetof(_tagJQIMG, width) == 12, "");
static_assert(offsetof(_tagJQIMG, height) == 14, "");
static_assert(offsetof(_tagJQIMG, bytesPerLine) == 16, "");
static_assert(offsetof(_tagJQIMG, format) == 20, "");
static_assert(offsetof(_tagJQIMG, channels) == 22, "");
static_assert(offsetof(_tagJQIMG, bytesPerChannel) == 23, "");
static_assert(offsetof(_tagJQIMG, bufferSize) == 32, "");
static_assert(offsetof(_tagJQIMG, pixels) == 48, "");

/// Names that the host's modules share: configuration files, keys and modes.
namespace jqglobal {
inline constexpr char kCameraConfigFile[] = "/CameraCfg.ini";
inline constexpr char kWhiteBalanceConfigFile[] = "/BBlanceCfg.ini";
inline constexpr char kHasUsed[] = "HasUsed";
inline constexpr char kCameraGroup[] = "CamGroup";
inline constexpr char kCurrentGroup[] = "CurGroup";
inline constexpr char kWhiteBalanceGroup[] = "BBGroup";
inline constexpr char kDefaultGroup[] = "DftGroup";
/// Source text; the host passes it through its own translation.
inline constexpr char kDefaultName[] = "Default";
inline constexpr char kModeResolution[] = "ModeResolution";
inline constexpr char kModeFileSave[] = "ModeFileSave";
inline constexpr char kModeTimeLapse[] = "ModeTimeLapse";
inline constexpr char kModeVideoRecord[] = "ModeVideoRecodrd";
inline constexpr char kModeStitch[] = "ModeStitch";
inline constexpr char kModeExtendedDepth[] = "ModeEDF";
inline constexpr char kModeShift[] = "ModeShift";
inline constexpr char kModeDarkField[] = "ModeDrakField";
inline constexpr char kModeWhiteBalance[] = "ModeBBlance";
inline constexpr char kModeTemperature[] = "ModeTemperature";
}  // namespace jqglobal

#endif  // JQGLOBALCLASS_H

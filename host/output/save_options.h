#ifndef JQHOST_OUTPUT_SAVE_OPTIONS_H
#define JQHOST_OUTPUT_SAVE_OPTIONS_H

#include <array>
#include <functional>
#include <opencv2/core.hpp>
#include <optional>
#include <string>

namespace jqhost {

/// How the tiles of a pyramid are packed. Deep Zoom knows deflate (PNG tiles) and JPEG.
enum class Compression { kDeflate, kNone, kLzw, kZstd, kJpeg };

/// How a picture is saved. The extension of the path chooses the format.
struct SaveOptions {
  std::string path;
  std::optional<std::array<int, 3>> background;  ///< red, green, blue of what no frame covers
  bool grey = false;  ///< the frames were grey: one channel, unless the background has a colour
  /// Width and height of a pixel of this picture, in metres.
  std::optional<cv::Size2d> pixelSize;
  bool scaleBar = false;  ///< draws one into the lower right corner; needs the pixel size
  Compression compression = Compression::kDeflate;
  int quality = 90;  ///< of JPEG, 1 to 100
};

/// Told now and then, on the thread that saves, how much is done: 0 to 1.
using SaveProgress = std::function<void(double share)>;

}  // namespace jqhost

#endif  // JQHOST_OUTPUT_SAVE_OPTIONS_H

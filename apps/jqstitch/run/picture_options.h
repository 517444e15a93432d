#ifndef JQSTITCH_RUN_PICTURE_OPTIONS_H
#define JQSTITCH_RUN_PICTURE_OPTIONS_H

#include <array>
#include <opencv2/core.hpp>
#include <optional>
#include <string>

#include "host/output/save_options.h"

namespace CLI {
class App;
}

namespace jqstitch {

/// The picture that a command writes, and what goes into it.
struct PictureOptions {
  std::string output;
  bool trim = true;
  std::optional<std::array<int, 3>> background;  ///< red, green, blue
  std::optional<jqhost::Compression> compression;
  std::optional<int> quality;
  std::optional<double> pixelSize;  ///< of a frame's pixel, in metres
  bool scaleBar = false;
  std::string coverage;  ///< mask of the placed pixels; empty: none
};

/// Adds the options of every command that ends with a picture, and refuses those that do
/// not fit each other. `options` must outlive the parsing.
void AddPictureOptions(CLI::App& command, PictureOptions& options);

/// Width and height of a pixel of the picture, in metres, where the user told that of a
/// frame: frames are shrunk by the detection level before they are placed.
std::optional<cv::Size2d> PicturePixelSize(const PictureOptions& options, cv::Size frame,
                                           cv::Size workingFrame);

/// How the picture is saved. @param grey whether all frames were grey
jqhost::SaveOptions MakeSaveOptions(const PictureOptions& options, bool grey,
                                    const std::optional<cv::Size2d>& pixelSize);

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_PICTURE_OPTIONS_H

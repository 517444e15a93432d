#ifndef JQ_BENCH_HOST_ASSEMBLY_MADE_PASS_H
#define JQ_BENCH_HOST_ASSEMBLY_MADE_PASS_H

#include <cstdint>
#include <functional>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "host/simulate/camera.h"

namespace jqbench {

/// Paints a scene of a size; the same arguments give the same pixels.
using PaintScene = std::function<cv::Mat(cv::Size, std::uint64_t)>;

/// How frames are taken from a scene.
struct PassSettings {
  cv::Size frame{640, 480};
  int count = 24;
  int columns = 0;        ///< of the grid of frames; 0: about a square
  double overlap = 0.3;   ///< of neighbours in the grid, as a share of the frame
  double jitter = 0.05;   ///< largest deviation from the grid, as a share of the frame
  double badShare = 0.0;  ///< of the frames: black, out of focus, or of another scene
  /// Every frame has a defocus of its own, up to the one given.
  jqhost::CameraEffects effects;
  bool shuffled = true;  ///< else line by line, there and back
  std::uint64_t seed = 1;
};

enum class FrameKind { kGood, kBlack, kDefocused, kForeign };

/// The kind as the table of the frames spells it.
const char* FrameKindName(FrameKind kind);

struct MadeFrame {
  cv::Mat picture;
  FrameKind kind = FrameKind::kGood;
  cv::Point corner;  ///< in the scene; of no meaning for a foreign frame
  int taken = 0;     ///< as the how manieth, from 1
};

/// Frames of a painted scene that is just large enough.
/// @param other paints what a foreign frame shows
std::vector<MadeFrame> MakePass(const PaintScene& scene, const PaintScene& other,
                                const PassSettings& settings);

/// Frames of a picture: as many of those asked for as the picture has room for.
std::vector<MadeFrame> MakePass(const cv::Mat& picture, const PaintScene& other,
                                const PassSettings& settings);

/// Writes frame_0001.png and so on into the folder, and frames.csv with lines
/// "file,kind,x,y,taken".
void WritePass(const std::vector<MadeFrame>& frames, const std::string& folder);

}  // namespace jqbench

#endif  // JQ_BENCH_HOST_ASSEMBLY_MADE_PASS_H

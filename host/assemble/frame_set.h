#ifndef JQHOST_ASSEMBLE_FRAME_SET_H
#define JQHOST_ASSEMBLE_FRAME_SET_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/assemble/frame_features.h"
#include "host/run/stop_token.h"
#include "host/source/frame_preparation.h"
#include "host/source/picture_pages.h"
#include "host/verdict/doubt/placement_view.h"

namespace jqhost {

/// How frames are read and looked at.
struct FrameSetSettings {
  int detectLevel = 1;  ///< of the engine; frames are shrunk by it
  int cornerBudget = 8;
  int threads = 1;
  std::int64_t maxPixels = kMostPixels;
  bool thumbnails = false;
};

/// What is kept of a frame: not its pixels.
struct SetFrame {
  PictureId picture;
  std::string why;  ///< why it cannot be used; empty: nothing speaks against it
  cv::Size size;    ///< pixels of the file; empty when it was not read
  FrameFeatures features;
  ReducedFrame reduced;  ///< at the working scale
  std::vector<unsigned char> thumbnail;
};

/// An engine with the parameters of a run.
JQStitchingAlgorithm MakeEngine(const FrameSetSettings& settings);

/// A prepared picture as the engine registers it: 8 bits, three channels, no zero samples,
/// divided by the detection level.
cv::Mat AtWorkingScale(const cv::Mat& prepared, int detectLevel);

/// Reads all pictures, on several threads. They are prepared in their order, since the
/// preparation takes the depth of samples from the first frame that has 16 bits. After a
/// requested stop the rest stays unread, without a cause in `why`.
/// Raises `InputError` where the preparation does.
/// @param progress hears how many are done
std::vector<SetFrame> ReadFrameSet(const std::vector<PictureId>& pictures,
                                   const FrameSetSettings& settings, FramePreparation& preparation,
                                   const StopToken& stop,
                                   const std::function<void(std::size_t)>& progress);

}  // namespace jqhost

#endif  // JQHOST_ASSEMBLE_FRAME_SET_H

#ifndef JQSCOPE_SOURCE_SIMULATED_MICROSCOPE_H
#define JQSCOPE_SOURCE_SIMULATED_MICROSCOPE_H

#include <memory>
#include <string>

#include "host/run/stop_token.h"
#include "host/source/frame_source.h"
#include "source/stage.h"

namespace jqscope {

/// What the simulated microscope is made of.
struct MicroscopeOptions {
  std::string slide;           ///< a picture; empty: the built-in slide
  cv::Size frame{640, 480};    ///< one camera frame
  cv::Size scene{4000, 3000};  ///< of the built-in slide
  std::uint64_t seed = 1;      ///< which slide, and which noise
  double framesPerSecond = 20;
};

/// A camera that looks at a slide through `stage`. Never ends before the stop; waits
/// until its next frame is due. Raises `InputError` when the picture cannot be used.
/// @param stage, stop must outlive the source
std::unique_ptr<jqhost::FrameSource> OpenMicroscope(const MicroscopeOptions& options, Stage& stage,
                                                    const jqhost::StopToken& stop);

}  // namespace jqscope

#endif  // JQSCOPE_SOURCE_SIMULATED_MICROSCOPE_H

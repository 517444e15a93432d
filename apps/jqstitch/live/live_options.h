#ifndef JQSTITCH_LIVE_LIVE_OPTIONS_H
#define JQSTITCH_LIVE_LIVE_OPTIONS_H

#include <string>
#include <vector>

#include "host/run/frame_loop.h"
#include "host/run/stitch_settings.h"
#include "host/source/frame_preparation.h"
#include "run/run_options.h"

namespace jqstitch {

struct LiveOptions {
  RunOptions run;
  jqhost::PreparationSettings preparation;
  std::vector<std::string> source;  ///< pictures, folders, a video, a stream, a camera number
  std::string list;                 ///< file with one path a line, or "-"
  double follow = 0.0;              ///< seconds; 0: the folder does not grow
  jqhost::StitchSettings settings;
  jqhost::LoopSettings loop;
  double saveEvery = 0.0;  ///< seconds; 0: only at the end
  std::string preview;     ///< picture at display size; empty: none
};

}  // namespace jqstitch

#endif  // JQSTITCH_LIVE_LIVE_OPTIONS_H

#ifndef JQSTITCH_LIVE_LIVE_OPTIONS_H
#define JQSTITCH_LIVE_LIVE_OPTIONS_H

#include <string>
#include <vector>

#include "run/run_options.h"
#include "run/verdict.h"

namespace jqstitch {

struct LiveOptions {
  RunOptions run;
  std::vector<std::string> source;  ///< pictures, folders, a video, or a camera number
  StitchSettings settings;
  int every = 1;           ///< takes the first of so many frames
  int maxFrames = 0;       ///< 0: all
  double fps = 0.0;        ///< replay pace; 0: as fast as possible
  double saveEvery = 0.0;  ///< seconds; 0: only at the end
  std::string preview;     ///< picture at display size; empty: none
};

}  // namespace jqstitch

#endif  // JQSTITCH_LIVE_LIVE_OPTIONS_H

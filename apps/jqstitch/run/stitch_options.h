#ifndef JQSTITCH_RUN_STITCH_OPTIONS_H
#define JQSTITCH_RUN_STITCH_OPTIONS_H

#include "host/run/stitch_settings.h"

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds the options that set up the stitcher, for the commands that run it frame
/// by frame. `settings` must outlive the parsing.
void AddStitchOptions(CLI::App& command, jqhost::StitchSettings& settings);

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_STITCH_OPTIONS_H

#ifndef JQSTITCH_RUN_FRAME_OPTIONS_H
#define JQSTITCH_RUN_FRAME_OPTIONS_H

#include "host/source/frame_preparation.h"

namespace CLI {
class App;
}

namespace jqstitch {

/// Adds --depth, --flat and --dark. `settings` must outlive the parsing.
void AddFrameOptions(CLI::App& command, jqhost::PreparationSettings& settings);

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_FRAME_OPTIONS_H

#ifndef JQSTITCH_LIVE_LIVE_OPTIONS_H
#define JQSTITCH_LIVE_LIVE_OPTIONS_H

#include <cstdint>
#include <string>
#include <vector>

#include "host/run/frame_loop.h"
#include "host/run/stitch_settings.h"
#include "host/source/frame_preparation.h"
#include "journal/journal_options.h"
#include "run/run_options.h"

namespace CLI {
class App;
}

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
  JournalOptions journal;
  bool dropDoubtful = false;   ///< else they are kept
  std::int64_t maxMemory = 0;  ///< bytes of the mosaic; 0: no limit
};

/// Adds what `live` and `resume` have in common: where frames come from besides SOURCE,
/// and how the run goes on. `options` must outlive the parsing.
void AddListOptions(CLI::App& command, LiveOptions& options);
void AddRunningOptions(CLI::App& command, LiveOptions& options);

/// Checks what no single option can. Raises `CLI::Error`s.
void CheckSource(LiveOptions& options);

/// Checks, before any work, all paths that the run writes to. Raises `InputError`.
void CheckPaths(const LiveOptions& options);

}  // namespace jqstitch

#endif  // JQSTITCH_LIVE_LIVE_OPTIONS_H

#ifndef JQSTITCH_BATCH_BATCH_OPTIONS_H
#define JQSTITCH_BATCH_BATCH_OPTIONS_H

#include <string>
#include <vector>

#include "host/source/frame_preparation.h"
#include "run/run_options.h"

namespace jqstitch {

struct BatchOptions {
  RunOptions run;
  jqhost::PreparationSettings preparation;
  std::vector<std::string> paths;  ///< pictures and folders
  std::string list;                ///< file with one path a line, or "-"
  bool natural = false;            ///< sort all paths, not only those of folders
  bool skipBad = false;            ///< leave unusable files out instead of refusing the run
};

}  // namespace jqstitch

#endif  // JQSTITCH_BATCH_BATCH_OPTIONS_H

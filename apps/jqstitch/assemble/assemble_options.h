#ifndef JQSTITCH_ASSEMBLE_ASSEMBLE_OPTIONS_H
#define JQSTITCH_ASSEMBLE_ASSEMBLE_OPTIONS_H

#include <optional>
#include <string>
#include <vector>

#include "host/assemble/hints.h"
#include "host/source/frame_preparation.h"
#include "run/run_options.h"

namespace jqstitch {

struct AssembleOptions {
  RunOptions run;
  jqhost::PreparationSettings preparation;
  std::vector<std::string> paths;  ///< pictures and folders
  std::string list;                ///< file with one path a line, or "-"
  bool natural = false;            ///< sort all paths, not only those of folders
  bool skipBad = false;            ///< leave unusable files out instead of refusing the run
  bool allIslands = false;         ///< write each island
  int detectLevel = 1;
  int cornerBudget = 8;
  std::optional<jqhost::GridHint> grid;
  std::optional<jqhost::GridOrder> order;
  std::optional<double> overlap;  ///< per cent
  std::string positions;          ///< file of lines file,x,y
};

}  // namespace jqstitch

#endif  // JQSTITCH_ASSEMBLE_ASSEMBLE_OPTIONS_H

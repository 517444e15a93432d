#include "run/stitch_options.h"

#include <CLI/CLI.hpp>

namespace jqstitch {

void AddStitchOptions(CLI::App& command, jqhost::StitchSettings& settings) {
  command
      .add_option("--overlap-mode", settings.overlapMode,
                  "fitness of a frame: 0 by overlap with the picture (default), 1 by little motion")
      ->type_name("0|1")
      ->check(CLI::Range(0, 1));
  command
      .add_option("--detect-level", settings.detectLevel,
                  "works at 1/N of the size, 1 to 7; the picture is as small (1)")
      ->type_name("N")
      ->check(CLI::Range(1, 7));
  command
      .add_option("--corner-budget", settings.cornerBudget,
                  "more corners, slower and surer, 0 to 100 (8)")
      ->type_name("N")
      ->check(CLI::Range(0, 100));
}

}  // namespace jqstitch

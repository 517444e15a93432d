#include "live/live_command.h"

#include <CLI/CLI.hpp>

namespace jqstitch {

void AddLiveCommand(CLI::App& program, int& exitCode) {
  program.add_subcommand("live");
  (void)exitCode;
}

}  // namespace jqstitch

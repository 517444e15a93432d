#include "batch/batch_command.h"

#include <CLI/CLI.hpp>

namespace jqstitch {

void AddBatchCommand(CLI::App& program, int& exitCode) {
  program.add_subcommand("batch");
  (void)exitCode;
}

}  // namespace jqstitch

#include "command.h"

CLI::App* AddBatchCommand(CLI::App& app, int& exitCode) {
  CLI::App* command = app.add_subcommand("batch");
  (void)exitCode;
  return command;
}

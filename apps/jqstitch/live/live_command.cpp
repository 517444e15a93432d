#include "command.h"

CLI::App* AddLiveCommand(CLI::App& app, int& exitCode) {
  CLI::App* command = app.add_subcommand("live");
  (void)exitCode;
  return command;
}

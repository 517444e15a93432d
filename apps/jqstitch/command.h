#ifndef JQSTITCH_COMMAND_H
#define JQSTITCH_COMMAND_H

#include <CLI/CLI.hpp>

/// One function per command. Each adds its subcommand with options, help and
/// examples; the subcommand's callback runs the command and writes one of the
/// values of exit_codes.h to `exitCode`, which outlives the parse. A callback
/// writes errors to standard error itself; an exception that leaves it is shown
/// by main as wrong input.
CLI::App* AddBatchCommand(CLI::App& app, int& exitCode);
CLI::App* AddLiveCommand(CLI::App& app, int& exitCode);
CLI::App* AddSimulateCommand(CLI::App& app, int& exitCode);
CLI::App* AddInspectCommand(CLI::App& app, int& exitCode);

#endif  // JQSTITCH_COMMAND_H

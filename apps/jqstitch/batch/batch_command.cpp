#include "batch/batch_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "batch/batch_run.h"
#include "exit_codes.h"
#include "host/input_error.h"
#include "run/frame_options.h"

namespace jqstitch {
namespace {

constexpr char kBatchExamples[] =
    R"(All pictures must have one size. A folder is taken in natural order (2 before 10), files as
given. Ctrl-C ends the run and saves what has been stitched; a second Ctrl-C ends it at once (exit code 130).

Examples:
  jqstitch batch scans/ -o mosaic.png
  jqstitch batch a.png b.png c.png -o mosaic.tif --background 255,255,255
  find . -name '*.jpg' | sort -V | jqstitch batch --list - -o mosaic.png --report report.html
  jqstitch batch --natural shot*.png -o mosaic.png --json

Exit codes: 0 all placed, 1 wrong input, 2 wrong usage, 3 some left out or doubtful,
4 none placed.)";

void AddOptions(CLI::App& command, BatchOptions& o) {
  command.add_option("FILES", o.paths, "pictures and folders, in stitching order");
  command.add_option("--list", o.list, "file with one path a line; - for standard input")
      ->type_name("FILE");
  command.add_flag("--natural", o.natural, "sort all files by name, 2 before 10");
  command.add_flag("--skip-bad", o.skipBad,
                   "leave out unreadable files and those of another size than most");
  AddRunOptions(command, o.run);
  AddFrameOptions(command, o.preparation);
}

int RunBatch(const BatchOptions& options) {
  Console console("batch", options.run.quiet, options.run.json);
  try {
    SetThreads(options.run.threads);
    CheckOutputs(options.run, std::string());
    CheckNoInputIsOutput({options.preparation.flat, options.preparation.dark},
                         OutputPaths(options.run, std::string()));
    return BatchRun(options, console).Run();
  } catch (const jqhost::InputError& error) {
    console.Complain(error.what());
    console.Event({{"event", "error"}, {"text", error.what()}});
    return kExitWrongInput;
  }
}

}  // namespace

void AddBatchCommand(CLI::App& program, int& exitCode) {
  CLI::App* command =
      program.add_subcommand("batch", "Stitch picture files of one size, in order, in one go");
  command->footer(kBatchExamples);
  const auto options = std::make_shared<BatchOptions>();
  AddOptions(*command, *options);
  command->callback([options, &exitCode] {
    if (options->paths.empty() && options->list.empty()) {
      throw CLI::RequiredError("FILES, or --list FILE,");
    }
    exitCode = RunBatch(*options);
  });
}

}  // namespace jqstitch

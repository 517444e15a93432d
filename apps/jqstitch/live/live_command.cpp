#include "live/live_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "exit_codes.h"
#include "host/input_error.h"
#include "live/live_run.h"
#include "run/frame_options.h"
#include "run/stitch_options.h"

namespace jqstitch {
namespace {

constexpr char kLiveExamples[] =
    R"(A folder is taken in natural order (2 before 10). Ctrl-C ends the run and saves what has been
stitched; a second Ctrl-C ends it at once (exit code 130).

Examples:
  jqstitch live frames/ -o mosaic.png
  jqstitch live pass.mp4 -o mosaic.png --every 5 --report report.html
  jqstitch live 0 -o mosaic.png --preview now.jpg --save-every 30
  jqstitch live rtsp://microscope/live -o mosaic.png --max-frames 500
  jqstitch live incoming/ -o mosaic.png --follow 30
  jqstitch live 0 -o mosaic.png --journal run/    (after a crash: jqstitch resume run/ ...)
  jqstitch live frames/ -o mosaic.png --truth frames/truth.csv --json

Exit codes: 0 all placed or tracked, 1 wrong input, 2 wrong usage, 3 some lost or doubtful,
4 none placed.)";

void AddOptions(CLI::App& command, LiveOptions& o) {
  command.add_option(
      "SOURCE", o.source,
      "pictures, folders, a video file, a stream (rtsp://, http://), the number of a "
      "camera; - for a list on standard input");
  AddListOptions(command, o);
  AddRunOptions(command, o.run);
  AddFrameOptions(command, o.preparation);
  AddStitchOptions(command, o.settings);
  command.add_option("--every", o.loop.every, "takes every Nth frame only (1)")
      ->type_name("N")
      ->check(CLI::Range(1, 1000000));
  AddRunningOptions(command, o);
  AddJournalOptions(command, o.journal);
}

int RunLive(const LiveOptions& options) {
  Console console("live", options.run.quiet, options.run.json);
  try {
    SetThreads(options.run.threads);
    CheckPaths(options);
    return LiveRun(options, console).Run();
  } catch (const jqhost::InputError& error) {
    console.Complain(error.what());
    console.Event({{"event", "error"}, {"text", error.what()}});
    return kExitWrongInput;
  }
}

}  // namespace

void AddLiveCommand(CLI::App& program, int& exitCode) {
  CLI::App* command =
      program.add_subcommand("live", "Stitch frame by frame: a folder, a video or a camera");
  command->footer(kLiveExamples);
  const auto options = std::make_shared<LiveOptions>();
  AddOptions(*command, *options);
  command->callback([options, &exitCode] {
    CheckSource(*options);
    if (options->source.empty() && options->list.empty()) {
      throw CLI::RequiredError("SOURCE, or --list FILE,");
    }
    exitCode = RunLive(*options);
  });
}

}  // namespace jqstitch

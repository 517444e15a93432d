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
  jqstitch live frames/ -o mosaic.png --truth frames/truth.csv --json

Exit codes: 0 all placed or tracked, 1 wrong input, 2 wrong usage, 3 some lost or doubtful,
4 none placed.)";

void AddOptions(CLI::App& command, LiveOptions& o) {
  command.add_option(
      "SOURCE", o.source,
      "pictures, folders, a video file, a stream (rtsp://, http://), the number of a "
      "camera; - for a list on standard input");
  command.add_option("--list", o.list, "file with one path a line; - for standard input")
      ->type_name("FILE");
  command
      .add_option("--follow", o.follow,
                  "SOURCE is a folder that grows: takes pictures as they appear, and ends when "
                  "none has come for so long")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.1, 1e6));
  AddRunOptions(command, o.run);
  AddFrameOptions(command, o.preparation);
  AddStitchOptions(command, o.settings);
  command.add_option("--every", o.loop.every, "takes every Nth frame only (1)")
      ->type_name("N")
      ->check(CLI::Range(1, 1000000));
  command.add_option("--max-frames", o.loop.maxFrames, "ends after N frames")
      ->type_name("N")
      ->check(CLI::Range(1, 1000000000));
  command
      .add_option("--fps", o.loop.fps, "pace of the replay, frames per second (as fast as it goes)")
      ->type_name("N")
      ->check(CLI::Range(0.001, 10000.0));
  command.add_option("--save-every", o.saveEvery, "saves the picture so far every N seconds")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.1, 1e6));
  command
      .add_option("--preview", o.preview,
                  "a picture at display size, refreshed every second while frames are placed")
      ->type_name("FILE");
}

// What no single option can check.
void CheckTogether(LiveOptions& o) {
  if (o.source == std::vector<std::string>{"-"} && o.list.empty()) {
    o.source.clear();
    o.list = "-";
  }
  if (o.source.empty() && o.list.empty()) throw CLI::RequiredError("SOURCE, or --list FILE,");
  if (o.follow > 0 && (o.source.size() != 1 || !o.list.empty())) {
    throw CLI::ValidationError("--follow", "one folder can be followed, and nothing else taken");
  }
}

int RunLive(const LiveOptions& options) {
  Console console("live", options.run.quiet, options.run.json);
  try {
    SetThreads(options.run.threads);
    CheckOutputs(options.run, options.preview);
    CheckNoInputIsOutput(options.source, OutputPaths(options.run, options.preview));
    CheckNoInputIsOutput({options.preparation.flat, options.preparation.dark},
                         OutputPaths(options.run, options.preview));
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
    CheckTogether(*options);
    exitCode = RunLive(*options);
  });
}

}  // namespace jqstitch

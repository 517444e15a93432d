#include "resume/resume_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "exit_codes.h"
#include "host/input_error.h"
#include "live/live_run.h"

namespace jqstitch {
namespace {

constexpr char kResumeExamples[] =
    R"(Takes a run up again that live recorded with --journal, also one that was killed: makes its
picture and report, or with SOURCE goes on, and the journal with it. The settings are those of the
recorded run. Where SOURCE is what it was then, the frames up to the one recorded last are passed
over. Frames have the numbers of their files in DIR/frames.

Examples:
  jqstitch resume run/ -o mosaic.png
  jqstitch resume run/ frames/ -o mosaic.png
  jqstitch resume run/ -o mosaic.png --until 40
  jqstitch resume run/ -o mosaic.png --drop 41,42

Exit codes: 0 all placed or tracked, 1 wrong input, 2 wrong usage, 3 some lost or doubtful,
4 none placed.)";

struct ResumeOptions {
  LiveOptions live;
  jqhost::RecordedPart part;
};

void AddOptions(CLI::App& command, ResumeOptions& o) {
  command.add_option("DIR", o.live.journal.folder, "the journal of the recorded run")->required();
  command.add_option("SOURCE", o.live.source,
                     "where more frames come from, as for live; without it the run ends");
  AddListOptions(command, o.live);
  AddRunOptions(command, o.live.run);
  command
      .add_option("--until", o.part.until, "uses the recorded frames up to this one, and no more")
      ->type_name("N")
      ->check(CLI::PositiveNumber);
  command
      .add_option("--drop", o.part.drop,
                  "leaves these recorded frames out; refused where others were measured by them")
      ->type_name("N,N")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->check(CLI::PositiveNumber);
  AddRunningOptions(command, o.live);
  AddJournalEvery(command, o.live.journal);
}

int RunResume(ResumeOptions& options) {
  LiveOptions& live = options.live;
  Console console("resume", live.run.quiet, live.run.json);
  try {
    SetThreads(live.run.threads);
    jqhost::RecordedRun recorded(live.journal.folder, options.part);
    live.settings = recorded.Header().stitch;
    live.loop.every = recorded.Header().every;
    // Without more frames nothing is to be corrected.
    const bool more = !live.source.empty() || !live.list.empty();
    if (more) live.preparation = recorded.Header().preparation;
    CheckPaths(live);
    return LiveRun(live, console, recorded).Run();
  } catch (const jqhost::InputError& error) {
    console.Complain(error.what());
    console.Event({{"event", "error"}, {"text", error.what()}});
    return kExitWrongInput;
  }
}

}  // namespace

void AddResumeCommand(CLI::App& program, int& exitCode) {
  CLI::App* command =
      program.add_subcommand("resume", "Take up a recorded live run again, or make its picture");
  command->footer(kResumeExamples);
  const auto options = std::make_shared<ResumeOptions>();
  AddOptions(*command, *options);
  command->callback([options, &exitCode] {
    CheckSource(options->live);
    exitCode = RunResume(*options);
  });
}

}  // namespace jqstitch

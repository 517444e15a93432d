#include "verify/verify_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "console/console.h"
#include "console/interrupt.h"
#include "exit_codes.h"
#include "host/input_error.h"
#include "host/journal/journal_check.h"

namespace jqstitch {
namespace {

constexpr char kVerifyExamples[] =
    R"(Reads every line and frame of a journal, paints the picture that was saved last anew, and
compares it with the file, pixel by pixel. Changes nothing.

Examples:
  jqstitch verify run/
  jqstitch verify run/ --picture moved/mosaic.png

Exit codes: 0 the same, 1 wrong input or a damaged journal, 2 wrong usage, 3 the picture differs.)";

struct VerifyOptions {
  std::string folder, picture;
  bool json = false, quiet = false;
};

int Report(const jqhost::JournalCheck& check, Console& console) {
  const bool same = check.difference.empty();
  for (const std::string& torn : check.torn) {
    console.Say("Not used, because the recorded run ended while it was written: " + torn);
  }
  const std::string picture = "'" + check.picture + "'";
  if (same) {
    console.Say("The same: " + picture + " is what the journal's " + std::to_string(check.frames) +
                " frames make, pixel by pixel");
  } else {
    console.Complain(picture + " is not what the journal makes: " + check.difference);
  }
  const int exitCode = same ? kExitOk : kExitSomeLeftOut;
  console.Event({{"event", "verified"},
                 {"picture", check.picture},
                 {"frames", check.frames},
                 {"same", same},
                 {"difference", check.difference},
                 {"torn", check.torn},
                 {"exitCode", exitCode}});
  return exitCode;
}

int RunVerify(const VerifyOptions& options) {
  Console console("verify", options.quiet, options.json);
  try {
    const InterruptGuard guard({});
    bool begun = false;
    const auto check = jqhost::CheckJournal(options.folder, options.picture, guard.Token(),
                                            [&](int done, int total) {
                                              if (!begun) console.StartProgress(total, "frames");
                                              begun = true;
                                              console.Progress(done);
                                            });
    console.EndProgress();
    if (!check) throw jqhost::InputError(std::string("stopped by ") + guard.Reason());
    return Report(*check, console);
  } catch (const jqhost::InputError& error) {
    console.EndProgress();
    console.Complain(error.what());
    console.Event({{"event", "error"}, {"text", error.what()}});
    return kExitWrongInput;
  }
}

}  // namespace

void AddVerifyCommand(CLI::App& program, int& exitCode) {
  CLI::App* command =
      program.add_subcommand("verify", "Compare a saved picture with what its journal makes");
  command->footer(kVerifyExamples);
  const auto o = std::make_shared<VerifyOptions>();
  command->add_option("DIR", o->folder, "the journal")->required();
  command
      ->add_option("--picture", o->picture,
                   "the picture, where it is not in the place that the journal tells")
      ->type_name("FILE");
  command->add_flag("--json", o->json, "one event a line on standard output, as JSON");
  command->add_flag("-q,--quiet", o->quiet, "print nothing but errors");
  command->callback([o, &exitCode] { exitCode = RunVerify(*o); });
}

}  // namespace jqstitch

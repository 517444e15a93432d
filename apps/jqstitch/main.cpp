#include <langinfo.h>

#include <CLI/CLI.hpp>
#include <QtGlobal>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <opencv2/core/utils/logger.hpp>
#include <opencv2/core/version.hpp>
#include <string>

#include "assemble/assemble_command.h"
#include "batch/batch_command.h"
#include "exit_codes.h"
#include "flat/flat_command.h"
#include "host/system/pinned_file.h"
#include "inspect/inspect_command.h"
#include "live/live_command.h"
#include "resume/resume_command.h"
#include "simulate/simulate_command.h"
#include "verify/verify_command.h"

namespace {

constexpr char kVersionText[] =
    "jqstitch " JQSTITCH_VERSION " (Qt " QT_VERSION_STR ", OpenCV " CV_VERSION ")";

constexpr char kExamples[] = R"(Examples:
  jqstitch batch scans/ -o mosaic.png
  jqstitch assemble tiles/ -o mosaic.png
  jqstitch live frames/ -o mosaic.png --report report.html
  jqstitch simulate -o slide/ && jqstitch live slide/ -o mosaic.png --truth slide/truth.csv
  jqstitch inspect a.png b.png -o pair.png

`jqstitch COMMAND --help` shows the options of a command.

Exit codes: 0 all placed (live: or tracked), 1 wrong input, 2 wrong usage, 3 some left out, lost or
doubtful, 4 none placed; 128 and the signal's number when a second signal ended the program.)";

// File names are bytes; Qt's strings carry those of UTF-8 names. In a locale of
// another encoding (such as plain C) a name with an umlaut would come back
// different, and the stitcher would look for a file that is not there.
void UseUtf8ForPaths() {
  std::setlocale(LC_CTYPE, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) std::setlocale(LC_CTYPE, "C.UTF-8");
}

std::string CommandNames(CLI::App& app) {
  std::string names;
  for (const CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
    names += (names.empty() ? "" : ", ") + command->get_name();
  }
  return names;
}

// The command whose name the arguments hold, or the first word that is none.
const CLI::App* FindCommand(CLI::App& app, int argc, char** argv, std::string& wrong) {
  for (int i = 1; i < argc; ++i) {
    if (argv[i][0] == '-') continue;
    for (const CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
      if (command->get_name() == argv[i]) return command;
    }
    wrong = argv[i];
    return nullptr;
  }
  return nullptr;
}

int ReportParseError(CLI::App& app, const CLI::ParseError& error, int argc, char** argv) {
  // Help and version were asked for and go to standard output.
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) return app.exit(error);
  std::string wrong;
  const CLI::App* command = FindCommand(app, argc, argv, wrong);
  const std::string names = CommandNames(app);
  if (command != nullptr) {
    const std::string name = "jqstitch " + command->get_name();
    std::fprintf(stderr, "%s: %s\nTry '%s --help'.\n", name.c_str(), error.what(), name.c_str());
  } else if (!wrong.empty()) {
    std::fprintf(stderr,
                 "jqstitch: '%s' is no command; the commands are %s\nTry 'jqstitch --help'.\n",
                 wrong.c_str(), names.c_str());
  } else {
    std::fprintf(stderr, "jqstitch: %s\nThe commands are %s. Try 'jqstitch --help'.\n",
                 error.what(), names.c_str());
  }
  return jqstitch::kExitWrongUsage;
}

int Run(int argc, char** argv) {
  UseUtf8ForPaths();
  // A batch holds all its files open.
  jqhost::AllowManyOpenFiles();
  // The logs of the image library and of its video decoder would be a second voice
  // on standard error.
  setenv("OPENCV_FFMPEG_LOGLEVEL", "-8", 0);
  cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);

  CLI::App app("Stitches overlapping camera frames into one picture.", "jqstitch");
  app.set_version_flag("--version", kVersionText);
  app.require_subcommand(1);
  app.footer(kExamples);

  int exitCode = jqstitch::kExitOk;
  jqstitch::AddBatchCommand(app, exitCode);
  jqstitch::AddAssembleCommand(app, exitCode);
  jqstitch::AddLiveCommand(app, exitCode);
  jqstitch::AddSimulateCommand(app, exitCode);
  jqstitch::AddInspectCommand(app, exitCode);
  jqstitch::AddFlatCommand(app, exitCode);
  jqstitch::AddResumeCommand(app, exitCode);
  jqstitch::AddVerifyCommand(app, exitCode);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return ReportParseError(app, error, argc, argv);
  }
  return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "jqstitch: %s\n", error.what());
    return jqstitch::kExitWrongInput;
  }
}

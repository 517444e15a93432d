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

#include "batch/batch_command.h"
#include "exit_codes.h"
#include "flat/flat_command.h"
#include "inspect/inspect_command.h"
#include "live/live_command.h"
#include "simulate/simulate_command.h"

namespace {

constexpr char kVersionText[] =
    "jqstitch " JQSTITCH_VERSION " (Qt " QT_VERSION_STR ", OpenCV " CV_VERSION ")";

constexpr char kExamples[] = R"(Examples:
  jqstitch batch scans/ -o mosaic.png
  jqstitch live frames/ -o mosaic.png --report report.html
  jqstitch simulate -o slide/ && jqstitch live slide/ -o mosaic.png --truth slide/truth.csv
  jqstitch inspect a.png b.png -o pair.png

`jqstitch COMMAND --help` shows the options of a command.

Exit codes: 0 all placed, 1 wrong input, 2 wrong usage, 3 some left out or doubtful,
4 none placed.)";

// File names are bytes; Qt's strings carry those of UTF-8 names. In a locale of
// another encoding (such as plain C) a name with an umlaut would come back
// different, and the stitcher would look for a file that is not there.
void UseUtf8ForPaths() {
  std::setlocale(LC_CTYPE, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) std::setlocale(LC_CTYPE, "C.UTF-8");
}

int ReportParseError(const CLI::App& app, const CLI::ParseError& error) {
  // Help and version were asked for and go to standard output.
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) return app.exit(error);
  std::fprintf(stderr, "jqstitch: %s\nTry 'jqstitch --help'.\n", error.what());
  return jqstitch::kExitWrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
  UseUtf8ForPaths();
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
  jqstitch::AddLiveCommand(app, exitCode);
  jqstitch::AddSimulateCommand(app, exitCode);
  jqstitch::AddInspectCommand(app, exitCode);
  jqstitch::AddFlatCommand(app, exitCode);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return ReportParseError(app, error);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "jqstitch: %s\n", error.what());
    return jqstitch::kExitWrongInput;
  }
  return exitCode;
}

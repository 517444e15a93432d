#include "assemble/assemble_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>
#include <memory>

#include "assemble/assemble_run.h"
#include "exit_codes.h"
#include "host/input_error.h"
#include "run/frame_options.h"

namespace jqstitch {
namespace {

constexpr char kAssembleExamples[] =
    R"(All pictures must have one size; their order does not matter. Frames that nothing holds for sure
are left out and named. Ctrl-C ends the comparing and saves what is known to hold together by then;
a second Ctrl-C ends the program at once (exit code 130).

Examples:
  jqstitch assemble tiles/ -o mosaic.png
  jqstitch assemble shuffled*.png -o mosaic.png --report report.html
  jqstitch assemble --grid 5x6 --order snake --overlap 15 tiles/ -o mosaic.png
  jqstitch assemble --positions stage.csv --pixel-size 0.345um tiles/ -o mosaic.ome.tif
  jqstitch assemble --islands all tiles/ -o mosaic.png    (mosaic.png, mosaic-2.png, ...)

Exit codes: 0 all placed, 1 wrong input, 2 wrong usage, 3 some left out, 4 none placed.)";

constexpr int kMostCells = 1000000;

jqhost::GridHint ParseGrid(const std::string& text) {
  jqhost::GridHint grid;
  char rest = 0;
  const bool plain = text.find_first_not_of("0123456789x") == std::string::npos;
  const int read = std::sscanf(text.c_str(), "%6dx%6d%c", &grid.columns, &grid.rows, &rest);
  if (!plain || read != 2 || grid.columns < 1 || grid.rows < 1 ||
      static_cast<std::int64_t>(grid.columns) * grid.rows > kMostCells) {
    throw CLI::ValidationError("--grid", "'" + text + "' is not a grid COLUMNSxROWS, such as 5x6");
  }
  return grid;
}

void AddHintOptions(CLI::App& command, AssembleOptions& o) {
  command
      .add_option_function<std::string>(
          "--grid", [&o](const std::string& text) { o.grid = ParseGrid(text); },
          "the files are a grid of so many columns and rows, in --order")
      ->type_name("CxR");
  const std::map<std::string, jqhost::GridOrder> orders = {{"row", jqhost::GridOrder::kRow},
                                                           {"snake", jqhost::GridOrder::kSnake},
                                                           {"column", jqhost::GridOrder::kColumn}};
  command
      .add_option("--order", o.order,
                  "row: row by row from the left (default); snake: from the left and from the "
                  "right by turns; column: column by column from the top")
      ->type_name("NAME")
      ->transform(CLI::CheckedTransformer(orders).description(""));
  command.add_option("--overlap", o.overlap, "of neighbours in the --grid, 1 to 90")
      ->type_name("PERCENT")
      ->check(CLI::Range(1.0, 90.0));
  command
      .add_option("--positions", o.positions,
                  "about where the frames lie (lines file,x,y): in pixels, or with --pixel-size in "
                  "micrometres")
      ->type_name("FILE");
}

void AddOptions(CLI::App& command, AssembleOptions& o) {
  command.add_option("FILES", o.paths, "pictures and folders, in any order");
  command.add_option("--list", o.list, "file with one path a line; - for standard input")
      ->type_name("FILE");
  command.add_flag("--natural", o.natural, "sort all files by name, 2 before 10");
  command.add_flag("--skip-bad", o.skipBad,
                   "leave out unreadable files and those of another size than most");
  command
      .add_option_function<std::string>(
          "--islands", [&o](const std::string& text) { o.allIslands = text == "all"; },
          "frames that nothing connects with the picture: all writes each such group as a picture "
          "of its own, largest writes the largest only (default)")
      ->type_name("NAME")
      ->check(CLI::IsMember({"all", "largest"}).description(""));
  AddHintOptions(command, o);
  command
      .add_option("--detect-level", o.detectLevel,
                  "works at 1/N of the size, 1 to 7; the picture is as small (1)")
      ->type_name("N")
      ->check(CLI::Range(1, 7));
  command
      .add_option("--corner-budget", o.cornerBudget, "more corners, slower and surer, 0 to 100 (8)")
      ->type_name("N")
      ->check(CLI::Range(0, 100));
  AddRunOptions(command, o.run);
  AddFrameOptions(command, o.preparation);
}

// What no single option can check.
void CheckHints(AssembleOptions& options) {
  if (options.paths.empty() && options.list.empty()) {
    throw CLI::RequiredError("FILES, or --list FILE,");
  }
  if (!options.grid && options.order) throw CLI::ValidationError("--order", "goes with --grid");
  if (!options.grid && options.overlap) throw CLI::ValidationError("--overlap", "goes with --grid");
  if (options.grid && !options.positions.empty()) {
    throw CLI::ValidationError("--positions", "does not go with --grid; choose one of them");
  }
  if (options.order) options.grid->order = *options.order;
}

int RunAssemble(const AssembleOptions& options) {
  Console console("assemble", options.run.quiet, options.run.json);
  try {
    SetThreads(options.run.threads);
    CheckOutputs(options.run, std::string());
    CheckNoInputIsOutput({options.preparation.flat, options.preparation.dark, options.positions},
                         OutputPaths(options.run, std::string()));
    return AssembleRun(options, console).Run();
  } catch (const jqhost::InputError& error) {
    console.Complain(error.what());
    console.Event({{"event", "error"}, {"text", error.what()}});
    return kExitWrongInput;
  }
}

}  // namespace

void AddAssembleCommand(CLI::App& program, int& exitCode) {
  CLI::App* command = program.add_subcommand(
      "assemble", "Put picture files of one size together that come in any order");
  command->footer(kAssembleExamples);
  const auto options = std::make_shared<AssembleOptions>();
  AddOptions(*command, *options);
  command->callback([options, &exitCode] {
    CheckHints(*options);
    exitCode = RunAssemble(*options);
  });
}

}  // namespace jqstitch

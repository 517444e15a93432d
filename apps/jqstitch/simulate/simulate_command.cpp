#include "simulate/simulate_command.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

#include "exit_codes.h"
#include "simulate/simulate_options.h"

namespace jqstitch {
namespace {

const std::map<std::string, jqhost::PathKind> kPaths = {
    {"row", jqhost::PathKind::kRow},
    {"serpentine", jqhost::PathKind::kSerpentine},
    {"spiral", jqhost::PathKind::kSpiral},
    {"random", jqhost::PathKind::kRandomWalk}};

const std::map<std::string, cv::Point> kDirections = {
    {"right", {1, 0}}, {"down-right", {1, 1}}, {"down", {0, 1}}, {"down-left", {-1, 1}},
    {"left", {-1, 0}}, {"up-left", {-1, -1}},  {"up", {0, -1}},  {"up-right", {1, -1}}};

// Like CLI::Range, but "nan" is refused too.
CLI::Validator Between(double low, double high) {
  const std::string range = CLI::detail::to_string(low) + " to " + CLI::detail::to_string(high);
  return CLI::Validator(
      [low, high, range](std::string& text) {
        double value = 0;
        const bool fits = CLI::detail::lexical_cast(text, value) && value >= low && value <= high;
        return fits ? std::string() : "'" + text + "' is not a number from " + range;
      },
      range);
}

// The parser takes "-1" for the largest unsigned number.
CLI::Validator NotNegative() {
  return CLI::Validator(
      [](std::string& text) {
        return text.find('-') == std::string::npos ? std::string() : "'" + text + "' is negative";
      },
      "");
}

template <typename Value>
CLI::Option* AddChoice(CLI::App& app, const std::string& name, Value& value,
                       const std::map<std::string, Value>& choices, const std::string& help) {
  std::string names;
  for (const auto& choice : choices) names += (names.empty() ? "" : ", ") + choice.first;
  return app.add_option_function<std::string>(
      name,
      [&value, &choices, name, names](const std::string& text) {
        const auto found = choices.find(text);
        if (found == choices.end()) {
          throw CLI::ValidationError(name, "'" + text + "' is none of " + names);
        }
        value = found->second;
      },
      help + ": " + names);
}

void ParseSize(const std::string& text, cv::Size& size) {
  const std::size_t cross = text.find('x');
  const bool parsed = cross != std::string::npos &&
                      CLI::detail::lexical_cast(text.substr(0, cross), size.width) &&
                      CLI::detail::lexical_cast(text.substr(cross + 1), size.height);
  if (!parsed || size.width < 16 || size.height < 16 || size.width > 16384 || size.height > 16384) {
    throw CLI::ValidationError("--size", "'" + text +
                                             "' is not a size from 16x16 to 16384x16384, such as "
                                             "1280x960");
  }
}

// What no single option can check.
void CheckTogether(const SimulateOptions& o, const CLI::App& command) {
  if (o.jumps > std::max(o.count - 2, 0)) {
    throw CLI::ValidationError("--jumps", "at most " + std::to_string(std::max(o.count - 2, 0)) +
                                              " of " + std::to_string(o.count) +
                                              " frames can jump (never the first or the last)");
  }
  if (command.count("--columns") > 0 && o.path != jqhost::PathKind::kSerpentine) {
    throw CLI::ValidationError("--columns", "only a serpentine has columns");
  }
  if (command.count("--direction") > 0 && o.path != jqhost::PathKind::kRow) {
    throw CLI::ValidationError("--direction", "only a row has a direction (--path row)");
  }
}

void AddOptions(CLI::App& app, SimulateOptions& o) {
  app.add_option("-o,--output", o.folder, "folder for the frames and truth.csv; made if missing")
      ->required();
  app.add_flag("--force", o.force,
               "use a folder that is not empty; replaces the frames of an earlier simulation");
  app.add_option("--image", o.image, "picture to pass over instead of the built-in slide");
  app.add_option("--scene", o.scene, "also write the whole scene to this file");
  app.add_option_function<std::string>(
      "--size", [&o](const std::string& text) { ParseSize(text, o.frame); },
      "size of a frame, WIDTHxHEIGHT (1280x960)");
  app.add_option("-n,--count", o.count, "number of frames (60)")->check(Between(1, 100000));
  AddChoice(app, "--path", o.path, kPaths, "way of the camera (serpentine)");
  AddChoice(app, "--direction", o.direction, kDirections, "direction of a row (right)");
  app.add_option("--columns", o.columns, "frames per line of a serpentine (about a square)")
      ->check(Between(1, 100000));
  app.add_option("--step", o.step, "percent of the frame from one to the next (20)")
      ->check(Between(0.1, 200));
  app.add_option("--jumps", o.jumps, "frames taken somewhere else, without any overlap (0)")
      ->check(Between(0, 100000));
  app.add_option("--noise", o.effects.noise, "sensor noise, standard deviation in grey levels (0)")
      ->check(Between(0, 100));
  app.add_option("--vignetting", o.effects.vignetting, "loss of light in the corners, percent (0)")
      ->check(Between(0, 95));
  app.add_option("--exposure-jitter", o.effects.exposure,
                 "largest change of exposure from frame to frame, percent (0)")
      ->check(Between(0, 90));
  app.add_option("--blur", o.effects.blur, "defocus, standard deviation in pixels (0)")
      ->check(Between(0, 50));
  app.add_option("--jpeg-quality", o.jpegQuality,
                 "write JPEG of this quality instead of PNG; of a video: 95")
      ->check(Between(1, 100));
  app.add_flag("--stream", o.stream, "write one video, frames.avi (Motion JPEG), not pictures");
  app.add_option("--seed", o.seed, "the same seed gives the same bytes (1)")->check(NotNegative());
  app.add_flag("-q,--quiet", o.quiet, "print nothing but errors");
}

}  // namespace

void AddSimulateCommand(CLI::App& program, int& exitCode) {
  CLI::App* app = program.add_subcommand(
      "simulate", "Write the frames of a camera that passes over a large picture");
  const auto options = std::make_shared<SimulateOptions>();
  AddOptions(*app, *options);
  app->footer(
      "The frames are numbered in the order they are taken; truth.csv tells the top-left\n"
      "corner of each in the scene, in pixels.\n\n"
      "Examples:\n"
      "  jqstitch simulate -o pass\n"
      "  jqstitch simulate -o pass --size 1280x960 --count 60 --step 8 --noise 3\n"
      "  jqstitch simulate -o pass --image slide.tif --path spiral --vignetting 15 --jumps 2\n");
  app->callback([app, options, &exitCode] {
    CheckTogether(*options, *app);
    Console console("simulate", options->quiet, false);
    try {
      Simulate(*options, console);
      exitCode = kExitOk;
    } catch (const std::exception& error) {
      console.Complain(error.what());
      exitCode = kExitWrongInput;
    }
  });
}

}  // namespace jqstitch

#include "flat/flat_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <opencv2/imgcodecs.hpp>

#include "console/console.h"
#include "exit_codes.h"
#include "host/flat/flat_estimate.h"
#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/source/path_list.h"
#include "host/source/picture_pages.h"
#include "run/run_options.h"

namespace jqstitch {
namespace {

constexpr int kFewFrames = 10;

struct FlatOptions {
  std::vector<std::string> paths;
  std::string list, dark, output;
  bool quiet = false;
};

cv::Mat ReadDark(const std::string& path) {
  if (path.empty()) return cv::Mat();
  std::string why;
  cv::Mat dark = jqhost::ReadStored({path, 0}, why);
  if (!why.empty()) throw jqhost::InputError("cannot read the dark frame '" + path + "': " + why);
  return dark;
}

void WriteFlat(const std::string& path, const cv::Mat& flat) {
  std::vector<unsigned char> bytes;
  const std::string extension = std::filesystem::path(path).extension().string();
  if (!cv::imencode(extension, flat, bytes)) {
    throw jqhost::InputError("cannot write '" + path + "'");
  }
  jqhost::WriteFileAtomically(path, bytes.data(), bytes.size());
}

void EstimateFlat(const FlatOptions& o, Console& console) {
  jqhost::CheckWritable(o.output);
  std::vector<std::string> paths = o.paths;
  if (!o.list.empty()) {
    const std::vector<std::string> listed = jqhost::ReadPathList(o.list);
    paths.insert(paths.end(), listed.begin(), listed.end());
  }
  const std::vector<std::string> files = jqhost::ExpandFolders(paths, {o.output});
  CheckNoInputIsOutput(files, {o.output});
  CheckNoInputIsOutput({o.dark}, {o.output});
  const std::vector<jqhost::PictureId> pictures = jqhost::ExpandPages(files);
  jqhost::FlatEstimate estimate(ReadDark(o.dark));
  console.StartProgress(static_cast<int>(pictures.size()), "frames");
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    std::string why;
    const cv::Mat frame = jqhost::ReadStored(pictures[i], why);
    if (why.empty()) why = estimate.Add(frame);
    if (!why.empty()) {
      throw jqhost::InputError("cannot use '" + NameOf(pictures[i]) + "': " + why);
    }
    console.Progress(static_cast<int>(i) + 1);
  }
  console.EndProgress();
  const cv::Mat flat = estimate.Result();
  WriteFlat(o.output, flat);
  console.Say("Flat field of " + std::to_string(estimate.Count()) +
              (estimate.Count() == 1 ? " frame: " : " frames: ") + o.output + ", " +
              std::to_string(flat.cols) + " x " + std::to_string(flat.rows) + " pixels of 16 bits");
  if (estimate.Count() < kFewFrames) {
    console.Say(
        "So few frames tell the light only if they show an empty field; of a specimen, give " +
        std::to_string(2 * kFewFrames) + " or more of different places");
  }
}

std::string CheckFlatName(const std::string& path) {
  const std::string extension = std::filesystem::path(path).extension().string();
  if (extension == ".tif" || extension == ".tiff" || extension == ".png") return std::string();
  return "'" + path + "' ends neither in .tif nor in .png, which hold 16 bits";
}

void AddOptions(CLI::App& app, FlatOptions& o) {
  app.add_option("FRAMES", o.paths,
                 "pictures and folders: frames of many places, or an empty field");
  app.add_option("--list", o.list, "file with one path a line; - for standard input")
      ->type_name("FILE");
  app.add_option("-o,--output", o.output, "flat field to write, .tif or .png")
      ->required()
      ->type_name("FILE")
      ->check(CheckFlatName);
  app.add_option("--dark", o.dark, "picture made without light; give it to live and batch as well")
      ->type_name("FILE");
  app.add_flag("-q,--quiet", o.quiet, "print nothing but errors");
}

}  // namespace

void AddFlatCommand(CLI::App& program, int& exitCode) {
  CLI::App* app =
      program.add_subcommand("flat", "Estimate the uneven light of a camera from its frames");
  const auto options = std::make_shared<FlatOptions>();
  AddOptions(*app, *options);
  app->footer(
      "What frames of many places have in common is the light. The more places, and the\n"
      "less they show, the better; an empty field is best.\n\n"
      "Examples:\n"
      "  jqstitch flat pass/ -o flat.tif\n"
      "  jqstitch live pass/ -o mosaic.png --flat flat.tif\n");
  app->callback([options, &exitCode] {
    if (options->paths.empty() && options->list.empty()) {
      throw CLI::RequiredError("FRAMES, or --list FILE,");
    }
    Console console("flat", options->quiet, false);
    try {
      EstimateFlat(*options, console);
      exitCode = kExitOk;
    } catch (const std::exception& error) {
      console.Complain(error.what());
      exitCode = kExitWrongInput;
    }
  });
}

}  // namespace jqstitch

#include "inspect/inspect_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <opencv2/imgproc.hpp>

#include "console/console.h"
#include "exit_codes.h"
#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/output/picture_format.h"
#include "host/source/frame_preparation.h"
#include "host/source/image_record.h"
#include "host/source/picture_pages.h"
#include "inspect/pair_analysis.h"
#include "inspect/pair_picture.h"
#include "run/frame_options.h"
#include "run/run_options.h"
#include "run/stitch_options.h"
#include "words/sample_words.h"

namespace jqstitch {
namespace {

struct InspectOptions {
  std::string first, second, output;
  jqhost::StitchSettings settings;
  jqhost::PreparationSettings preparation;
  PictureSettings picture;
  std::int64_t maxPixels = jqhost::kMostPixels;
  bool quiet = false;
};

// As a live run hands it over: 8 bits, colour.
cv::Mat ReadFrame(const std::string& path, jqhost::FramePreparation& preparation,
                  std::int64_t maxPixels) {
  std::string why;
  cv::Mat frame = jqhost::ReadStored({path, 0}, why, maxPixels);
  if (why.empty()) why = jqhost::WhyNoRecord(frame);
  if (!why.empty()) throw jqhost::InputError("cannot read '" + path + "': " + why);
  frame = preparation.Prepare(frame);
  if (frame.channels() == 1) cv::cvtColor(frame, frame, cv::COLOR_GRAY2BGR);
  return frame;
}

std::string Text(cv::Size size) {
  return std::to_string(size.width) + "x" + std::to_string(size.height);
}

// Whether B would be placed.
bool Inspect(InspectOptions& o) {
  jqhost::CheckPictureFormat(o.output);
  jqhost::RemoveAbandonedTemporaries(o.output);
  jqhost::CheckWritable(o.output);
  jqhost::FramePreparation preparation(o.preparation);
  const cv::Mat first = ReadFrame(o.first, preparation, o.maxPixels);
  const cv::Mat second = ReadFrame(o.second, preparation, o.maxPixels);
  if (first.size() != second.size()) {
    throw jqhost::InputError("the sizes differ: '" + o.first + "' is " + Text(first.size()) +
                             ", '" + o.second + "' is " + Text(second.size()) +
                             "; frames of one run have one size");
  }
  const int level = o.settings.detectLevel;
  if (first.cols < 4 * level || first.rows < 4 * level) {
    throw jqhost::InputError("the frames are too small: " + Text(first.size()) +
                             " at --detect-level " + std::to_string(level));
  }
  const PairAnalysis pair = AnalysePair(first, second, o.settings);
  o.picture.nameFirst = std::filesystem::path(o.first).filename().string();
  o.picture.nameSecond = std::filesystem::path(o.second).filename().string();
  const std::vector<unsigned char> bytes =
      jqhost::EncodePicture(o.output, DrawPair(pair, o.picture));
  jqhost::WriteFileAtomically(o.output, bytes.data(), bytes.size());
  // The words are what the command was asked for, so they go to standard output.
  if (!o.quiet) {
    std::cout << pair.verdict << "\n" << pair.overlapWords << "\n";
    for (const std::string& note : SampleNotes(preparation)) std::cout << note << "\n";
  }
  return pair.accepted;
}

void AddOptions(CLI::App& app, InspectOptions& o) {
  app.add_option("A", o.first, "frame that is in the mosaic already")->required();
  app.add_option("B", o.second, "frame to be placed")->required();
  app.add_option("-o,--output", o.output, "picture to write")->required();
  AddStitchOptions(app, o.settings);
  AddFrameOptions(app, o.preparation);
  app.add_option("--width", o.picture.width, "width of the picture in pixels (1600)")
      ->check(CLI::Range(400, 8000));
  app.add_option("--lines", o.picture.lines, "lines drawn of each kind at most (40)")
      ->check(CLI::Range(0, 100000));
  AddMaxPixelsOption(app, o.maxPixels);
  app.add_flag("-q,--quiet", o.quiet, "do not print the verdict");
}

}  // namespace

void AddInspectCommand(CLI::App& program, int& exitCode) {
  CLI::App* app = program.add_subcommand(
      "inspect", "Draw how two frames fit together: corners, matches, offset, fusion, weights");
  const auto options = std::make_shared<InspectOptions>();
  AddOptions(*app, *options);
  app->footer(
      "Prints what a live run would do with B after A, and why.\n\n"
      "Exit codes: 0 B would be placed, 1 wrong input, 2 wrong usage, 3 B would be left out.\n\n"
      "Examples:\n"
      "  jqstitch inspect frame_0001.png frame_0002.png -o pair.png\n"
      "  jqstitch inspect a.jpg b.jpg -o pair.png --detect-level 2 --overlap-mode 1\n");
  app->callback([options, &exitCode] {
    Console console("inspect", options->quiet, false);
    try {
      exitCode = Inspect(*options) ? kExitOk : kExitSomeLeftOut;
    } catch (const std::exception& error) {
      console.Complain(error.what());
      exitCode = kExitWrongInput;
    }
  });
}

}  // namespace jqstitch

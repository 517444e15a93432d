#include "report/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

namespace jqbench {
namespace {

bool ParseSize(const std::string& text, cv::Size& size) {
  char rest = 0;
  return std::sscanf(text.c_str(), "%dx%d%c", &size.width, &size.height, &rest) == 2 &&
         size.width > 0 && size.height > 0;
}

std::string CheckSize(const std::string& text) {
  cv::Size size;
  return ParseSize(text, size) ? "" : "'" + text + "' is not a size such as 640x480";
}

}  // namespace

bool Options::wants(const std::string& section) const {
  return sections.empty() || std::count(sections.begin(), sections.end(), section) != 0;
}

int Options::framesFor(cv::Size size, int full) const {
  if (frames > 0) return frames;
  if (quick) return std::min(full, 20);
  // Fewer of the large ones: the plain twin takes more than a second for one.
  constexpr int kManyPixels = 8000000;
  return size.area() > kManyPixels ? full / 2 : full;
}

bool ParseOptions(int argc, char** argv, Options& options, int& exitCode) {
  const std::vector<std::string> known{"live",   "batch", "pair",  "stages",
                                       "memory", "flat",  "growth"};
  std::vector<std::string> sizes;
  CLI::App app("Measures the library beside the plain twin, frame by frame, and compares results");
  app.add_option("--size", sizes, "Frame sizes, such as 640x480")->check(CheckSize);
  app.add_option("--mode", options.modes, "Overlap modes")->check(CLI::IsMember({0, 1}));
  app.add_option("--section", options.sections, "Parts of the report")->check(CLI::IsMember(known));
  app.add_option("--frames", options.frames, "Frames of a run")->check(CLI::Range(3, 10000));
  app.add_flag("--processor-clock", options.processorClock,
               "Leave out the time that other programs took");
  app.add_flag("--quick", options.quick, "Small pictures, few frames");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    exitCode = app.exit(error);
    return false;
  }
  for (const std::string& text : sizes) {
    cv::Size size;
    if (ParseSize(text, size)) options.sizes.push_back(size);
  }
  if (options.sizes.empty()) {
    if (options.quick) {
      options.sizes = {{320, 240}};
    } else {
      options.sizes = {{640, 480}, {1280, 960}, {2592, 1944}, {5472, 3648}};
    }
  }
  if (options.modes.empty()) options.modes = {0, 1};
  return true;
}

}  // namespace jqbench

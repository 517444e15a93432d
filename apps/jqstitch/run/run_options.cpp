#include "run/run_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <limits>
#include <opencv2/core/utility.hpp>

#include "host/input_error.h"
#include "host/output/atomic_file.h"
#include "host/output/picture_format.h"
#include "host/source/path_list.h"

namespace fs = std::filesystem;

namespace jqstitch {
namespace {

std::string CheckReportName(const std::string& path) {
  const std::string extension = fs::path(path).extension().string();
  if (extension == ".json" || extension == ".html" || extension == ".htm") return std::string();
  return "'" + path + "' ends neither in .json nor in .html";
}

// One file under two spellings, also while it does not exist yet.
bool IsSamePlace(const std::string& a, const std::string& b) {
  std::error_code error;
  return fs::weakly_canonical(a, error) == fs::weakly_canonical(b, error) ||
         jqhost::IsSameFile(a, b);
}

}  // namespace

void AddMaxPixelsOption(CLI::App& command, std::int64_t& maxPixels) {
  command
      .add_option("--max-pixels", maxPixels,
                  "refuse pictures whose header announces more pixels (400000000)")
      ->type_name("N")
      ->check(CLI::Range(std::int64_t{1}, std::numeric_limits<std::int64_t>::max()));
}

void AddRunOptions(CLI::App& command, RunOptions& options) {
  AddPictureOptions(command, options.picture);
  command
      .add_option("--report", options.reports,
                  "write a report: FILE.json, or FILE.html with the path of the frames; repeatable")
      ->type_name("FILE")
      ->allow_extra_args(false)
      ->check(CheckReportName);
  command
      .add_option("--truth", options.truth,
                  "compare the placed frames with their true corners (lines file,x,y)")
      ->type_name("FILE");
  command.add_flag("--json", options.json, "one event a line on standard output, as JSON");
  command.add_flag("-q,--quiet", options.quiet, "print nothing but errors");
  AddMaxPixelsOption(command, options.maxPixels);
  command.add_option("--threads", options.threads, "threads of the image library (all cores)")
      ->type_name("N")
      ->check(CLI::Range(1, 1024));
}

bool WantsThumbnails(const RunOptions& options) {
  return std::any_of(options.reports.begin(), options.reports.end(),
                     [](const std::string& path) { return fs::path(path).extension() != ".json"; });
}

void SetThreads(int threads) {
  // More threads than processors gain nothing, and the thread library warns of them.
  if (threads > 0) cv::setNumThreads(std::min(threads, cv::getNumberOfCPUs()));
}

std::vector<std::string> OutputPaths(const RunOptions& options, const std::string& preview) {
  std::vector<std::string> paths = {options.picture.output};
  if (!options.picture.coverage.empty()) paths.push_back(options.picture.coverage);
  paths.insert(paths.end(), options.reports.begin(), options.reports.end());
  if (!preview.empty()) paths.push_back(preview);
  return paths;
}

std::vector<std::string> TemporaryPaths(const std::vector<std::string>& outputs) {
  std::vector<std::string> paths;
  for (const std::string& output : outputs) {
    paths.push_back(jqhost::TemporaryName(output));
    // A picture that its format does not hold is saved as PNG instead.
    paths.push_back(jqhost::TemporaryName(output + ".png"));
  }
  return paths;
}

void CheckOutputs(const RunOptions& options, const std::string& preview) {
  const std::vector<std::string> paths = OutputPaths(options, preview);
  for (std::size_t i = 0; i < paths.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      if (IsSamePlace(paths[i], paths[k])) {
        throw jqhost::InputError("'" + paths[k] + "' and '" + paths[i] +
                                 "' are one file; give every output its own");
      }
    }
    jqhost::RemoveAbandonedTemporaries(paths[i]);
    jqhost::CheckWritable(paths[i]);
  }
  jqhost::CheckPictureFormat(options.picture.output);
  if (!preview.empty()) jqhost::CheckPictureFormat(preview);
}

void CheckNoInputIsOutput(const std::vector<std::string>& inputs,
                          const std::vector<std::string>& outputs) {
  for (const std::string& output : outputs) {
    for (const std::string& input : inputs) {
      if (jqhost::IsSameFile(input, output)) {
        throw jqhost::InputError("'" + output +
                                 "' is one of the frames and would be overwritten; choose "
                                 "another name");
      }
    }
  }
}

}  // namespace jqstitch

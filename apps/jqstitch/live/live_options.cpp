#include "live/live_options.h"

#include <CLI/CLI.hpp>
#include <filesystem>

#include "host/input_error.h"

namespace fs = std::filesystem;

namespace jqstitch {
namespace {

// The files of a journal are nobody else's.
void CheckOutsideJournal(const std::string& path, const std::string& folder) {
  std::error_code error;
  const fs::path inside =
      fs::weakly_canonical(path, error).lexically_relative(fs::weakly_canonical(folder, error));
  if (!inside.empty() && *inside.begin() != "..") {
    throw jqhost::InputError("'" + path + "' lies in the journal '" + folder +
                             "'; choose another folder");
  }
}

}  // namespace

void AddListOptions(CLI::App& command, LiveOptions& o) {
  command
      .add_option("--list", o.list,
                  "file with one path a line; - for standard input, a pipe: taken as lines come")
      ->type_name("FILE");
  command
      .add_option("--follow", o.follow,
                  "SOURCE is a folder that grows: takes pictures as they appear, and ends when "
                  "none has come for so long")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.1, 1e6));
}

void AddRunningOptions(CLI::App& command, LiveOptions& o) {
  command.add_option("--max-frames", o.loop.maxFrames, "ends after N frames")
      ->type_name("N")
      ->check(CLI::Range(1, 1000000000));
  command
      .add_option("--fps", o.loop.fps, "pace of the replay, frames per second (as fast as it goes)")
      ->type_name("N")
      ->check(CLI::Range(0.001, 10000.0));
  command.add_option("--save-every", o.saveEvery, "saves the picture so far every N seconds")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.1, 1e6));
  command
      .add_option("--preview", o.preview,
                  "a picture at display size, refreshed every second while frames are placed")
      ->type_name("FILE");
  command
      .add_option_function<std::string>(
          "--doubtful", [&o](const std::string& what) { o.dropDoubtful = what == "drop"; },
          "a frame whose place cannot be trusted: keep it (default), or drop it again")
      ->type_name("keep|drop")
      ->check(CLI::IsMember({"keep", "drop"}));
  command
      .add_option("--max-memory", o.maxMemory,
                  "most memory of the whole picture, such as 4G; the run ends before it would "
                  "need more, and saves what it has (no limit)")
      ->type_name("SIZE")
      ->transform(CLI::AsSizeValue(false))
      ->check(CLI::Range(std::int64_t{1}, std::int64_t{1} << 50));
}

void CheckSource(LiveOptions& o) {
  if (o.source == std::vector<std::string>{"-"} && o.list.empty()) {
    o.source.clear();
    o.list = "-";
  }
  if (o.follow > 0 && (o.source.size() != 1 || !o.list.empty())) {
    throw CLI::ValidationError("--follow", "one folder can be followed, and nothing else taken");
  }
}

void CheckPaths(const LiveOptions& o) {
  CheckOutputs(o.run, o.preview);
  const std::vector<std::string> outputs = OutputPaths(o.run, o.preview);
  CheckNoInputIsOutput(o.source, outputs);
  CheckNoInputIsOutput({o.preparation.flat, o.preparation.dark}, outputs);
  if (o.journal.folder.empty()) return;
  for (const std::string& output : outputs) CheckOutsideJournal(output, o.journal.folder);
}

}  // namespace jqstitch

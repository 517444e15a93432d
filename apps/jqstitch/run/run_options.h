#ifndef JQSTITCH_RUN_RUN_OPTIONS_H
#define JQSTITCH_RUN_RUN_OPTIONS_H

#include <cstdint>
#include <string>
#include <vector>

#include "host/source/picture_reader.h"
#include "run/picture_options.h"

namespace CLI {
class App;
}

namespace jqstitch {

/// What `batch` and `live` have in common.
struct RunOptions {
  PictureOptions picture;
  std::vector<std::string> reports;  ///< .json or .html
  std::string truth;
  bool json = false;
  bool quiet = false;
  std::int64_t maxPixels = jqhost::kMostPixels;
  int threads = 0;  ///< 0: as many as the image library likes
};

/// Adds --max-pixels. `maxPixels` must outlive the parsing.
void AddMaxPixelsOption(CLI::App& command, std::int64_t& maxPixels);

/// Adds the options. `options` must outlive the parsing.
void AddRunOptions(CLI::App& command, RunOptions& options);

/// Finds out, before any work, whether everything can be written: formats, paths,
/// and that no two outputs nor an input and an output are one file. Raises
/// `InputError`.
void CheckOutputs(const RunOptions& options, const std::string& preview);
void CheckNoInputIsOutput(const std::vector<std::string>& inputs,
                          const std::vector<std::string>& outputs);

/// Sets the threads of the image library; 0 leaves them.
void SetThreads(int threads);

/// Whether a report shows small pictures of the frames.
bool WantsThumbnails(const RunOptions& options);

/// All files that the run writes.
std::vector<std::string> OutputPaths(const RunOptions& options, const std::string& preview);

/// The temporary files beside them, which a program that ends at once removes.
std::vector<std::string> TemporaryPaths(const std::vector<std::string>& outputs);

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_RUN_OPTIONS_H

#include <cstdio>
#include <opencv2/core.hpp>
#include <string>

#include "report/live_section.h"
#include "report/options.h"

namespace {

using namespace jqbench;

bool LiveSection(const Options& options) {
  constexpr int kFrames = 48;
  std::string checks;
  bool equal = true;
  std::printf("%s", TimesHeader().c_str());
  for (const cv::Size size : options.sizes) {
    for (const int mode : options.modes) {
      const LiveResult result = RunLive({size, mode, options.framesFor(size, kFrames)});
      const std::string label = cv::format("live %dx%d, mode %d", size.width, size.height, mode);
      std::printf("%s", TimesRows(label, result.times).c_str());
      std::fflush(stdout);
      checks += EqualityLine(label, result.equality);
      equal = equal && result.equality.holds();
    }
  }
  std::printf("\n%s\n", checks.c_str());
  return equal;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  int exitCode = 0;
  if (!ParseOptions(argc, argv, options, exitCode)) return exitCode;
  cv::setNumThreads(1);
  bool equal = true;
  if (options.wants("live")) equal = LiveSection(options) && equal;
  return equal ? 0 : 1;
}

#ifndef JQ_BENCH_REPORT_OPTIONS_H
#define JQ_BENCH_REPORT_OPTIONS_H

#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace jqbench {

/// What the command line asks for.
struct Options {
  std::vector<cv::Size> sizes;
  std::vector<int> modes;
  std::vector<std::string> sections;
  int frames = 0;  ///< of a run; 0: the number that suits the size
  bool processorClock = false;
  bool quick = false;  ///< small pictures and few of them, to see that all works

  bool wants(const std::string& section) const;
  int framesFor(cv::Size size, int full) const;
};

/// False when the program is to end with `exitCode`: after --help or an error.
bool ParseOptions(int argc, char** argv, Options& options, int& exitCode);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_OPTIONS_H

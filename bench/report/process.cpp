#include "report/process.h"

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <opencv2/core.hpp>
#include <opencv2/core/utility.hpp>

#include "cpu/level.h"

namespace jqbench {
namespace {

// The text behind `key` and a colon in a file of such lines.
std::string Line(const char* file, const std::string& key) {
  std::ifstream in(file);
  std::string line;
  while (std::getline(in, line)) {
    if (line.compare(0, key.size(), key) != 0) continue;
    const size_t colon = line.find(':');
    if (colon == std::string::npos) continue;
    const size_t start = line.find_first_not_of(" \t", colon + 1);
    return start == std::string::npos ? "" : line.substr(start);
  }
  return "unknown";
}

std::size_t StatusBytes(const char* key) {
  return static_cast<std::size_t>(std::atoll(Line("/proc/self/status", key).c_str())) * 1024;
}

std::string Today() {
  const std::time_t now = std::time(nullptr);
  char text[32] = "";
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M UTC", std::gmtime(&now));
  return text;
}

long CacheKib(int name) {
  return sysconf(name) / 1024;
}

}  // namespace

std::size_t Resident() {
  return StatusBytes("VmRSS");
}

std::size_t PeakResident() {
  return StatusBytes("VmHWM");
}

bool RestartPeakResident() {
  std::ofstream out("/proc/self/clear_refs");
  out << "5" << std::flush;
  return out.good();
}

void TrimHeap() {
#if defined(__GLIBC__)
  malloc_trim(0);
#endif
}

long MinorFaults() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

std::string Circumstances(int argc, char** argv) {
  const char* commit = std::getenv("JQ_BENCH_COMMIT");
  std::string command = "scripts/bench.sh";
  for (int i = 1; i < argc; ++i) command += std::string(" ") + argv[i];
  std::string text;
  text += "- date: " + Today() + "\n";
  text += "- commit: " + std::string(commit != nullptr ? commit : "unknown") + "\n";
  text += "- command: `" + command + "`\n";
  text += "- machine: " + Line("/proc/cpuinfo", "model name") +
          cv::format(
              " (family %s, model %s), %ld processors, caches %ld KiB L1d, %ld KiB L2, "
              "%ld KiB L3\n",
              Line("/proc/cpuinfo", "cpu family").c_str(), Line("/proc/cpuinfo", "model\t").c_str(),
              sysconf(_SC_NPROCESSORS_ONLN), CacheKib(_SC_LEVEL1_DCACHE_SIZE),
              CacheKib(_SC_LEVEL2_CACHE_SIZE), CacheKib(_SC_LEVEL3_CACHE_SIZE));
  text += std::string("- vector level of the library: ") +
          jqstitching::cpu::Name(jqstitching::cpu::Running()) + "\n";
  text += "- OpenCV " + cv::getVersionString() + ", " + cv::getCPUFeaturesLine() + "; " +
          cv::format("%d thread", cv::getNumThreads()) + "\n";
  text += "- compiler: " __VERSION__ "\n";
  return text;
}

}  // namespace jqbench

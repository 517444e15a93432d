#include <cstdio>
#include <opencv2/core.hpp>
#include <string>

#include "report/batch_section.h"
#include "report/flat_section.h"
#include "report/growth_section.h"
#include "report/heap_count.h"
#include "report/live_section.h"
#include "report/memory_section.h"
#include "report/options.h"
#include "report/pair_section.h"
#include "report/process.h"
#include "report/stage_section.h"
#include "report/statistics.h"
#include "report/stopwatch.h"

namespace {

using namespace jqbench;

void Print(const std::string& text) {
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

// The scan stitcher and the whole-frame transforms say nothing new beyond this.
bool SuitsComparison(cv::Size size) {
  return size.area() <= 8000000;
}

bool LiveSection(const Options& options) {
  constexpr int kFrames = 48;
  std::string checks, notes;
  bool equal = true;
  Print("\n## Live run\n\n" + TimesHeader());
  for (const cv::Size size : options.sizes) {
    for (const int mode : options.modes) {
      const LiveResult result = RunLive({size, mode, options.framesFor(size, kFrames)});
      const std::string label = cv::format("live %dx%d, mode %d", size.width, size.height, mode);
      Print(TimesRows(label, result.times));
      checks += EqualityLine(label, result.equality);
      notes += cv::format(
          "%s: %.0f page faults a frame that is not placed; the record's conversion takes %.2f ms "
          "of the library's frame, %.2f ms of the plain twin's\n",
          label.c_str(), Median(result.faults), result.convertLibraryMs, result.convertPlainMs);
      equal = equal && result.equality.holds();
    }
  }
  Print("\n" + checks + "\n" + notes);
  return equal;
}

bool BatchSection(const Options& options) {
  constexpr int kFiles = 14;
  std::string checks;
  bool good = true;
  Print("\n## Batch run, without decoding\n\n" + TimesHeader());
  for (const cv::Size size : options.sizes) {
    const BatchResult result = RunBatch(size, options.framesFor(size, kFiles));
    const std::string label = cv::format("batch %dx%d", size.width, size.height);
    Print(TimesRows(label, result.times));
    checks += EqualityLine(label, result.equality);
    checks +=
        cv::format("%s: decoding %.2f ms a file; %d files read %d times by the library\n",
                   label.c_str(), Median(result.decodingMs), result.files, result.libraryReads);
    good = good && result.equality.holds() && result.libraryReads == result.files;
  }
  Print("\n" + checks);
  return good;
}

bool PairSection(const Options& options) {
  bool equal = true;
  Print("\n## Registration of a pair\n\n" + PairHeader());
  for (const cv::Size size : options.sizes) {
    if (SuitsComparison(size)) Print(PairRows(size, equal));
  }
  Print(std::string("\nlibrary and plain twin equal: ") + (equal ? "yes" : "NO") + "\n");
  return equal;
}

void MemorySection(const Options& options) {
  Print("\n## Memory\n\n");
  if (!HeapIsCounted()) {
    Print("The heap is not counted in this build.\n");
    return;
  }
  Print(MemoryHeader());
  for (const cv::Size size : options.sizes) {
    for (const int mode : options.modes) Print(MemoryRows(size, mode));
  }
}

void StageSection(const Options& options) {
  Print("\n## Stages\n\n");
  for (const cv::Size size : options.sizes) {
    if (options.quick || options.sizes.size() == 1 || size == cv::Size(2592, 1944)) {
      Print(StageTable(size) + "\n");
    }
  }
}

void FlatSection(const Options& options) {
  constexpr std::size_t kLarge = 1000000000;
  Print("\n## Time against the size of the mosaic\n\n");
  Print(options.quick ? FlatTable({320, 240}, 10000000, 20) : FlatTable({2592, 1944}, kLarge, 60));
}

bool GrowthSection(const Options& options) {
  bool equal = true;
  Print("\n## Growth of the mosaic\n\n" + GrowthHeader());
  if (options.quick) {
    Print(GrowthRows({320, 240}, {2, 2}, 1, equal));
  } else {
    Print(GrowthRows({2592, 1944}, {2, 2}, 9, equal));
    Print(GrowthRows({2592, 1944}, {9, 8}, 5, equal));
  }
  Print(std::string("\nold pixels in place, the rest black: ") + (equal ? "yes" : "NO") + "\n");
  return equal;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  int exitCode = 0;
  if (!ParseOptions(argc, argv, options, exitCode)) return exitCode;
  cv::setNumThreads(1);
  if (options.processorClock) ActiveClock() = Clock::kProcessor;
  bool equal = true;
  Print(Circumstances(argc, argv));
  if (options.wants("live")) equal = LiveSection(options) && equal;
  if (options.wants("batch")) equal = BatchSection(options) && equal;
  if (options.wants("pair")) equal = PairSection(options) && equal;
  if (options.wants("stages")) StageSection(options);
  if (options.wants("memory")) MemorySection(options);
  if (options.wants("flat")) FlatSection(options);
  if (options.wants("growth")) equal = GrowthSection(options) && equal;
  Print(cv::format("\nPeak resident memory of the whole report: %.0f MiB\n",
                   static_cast<double>(PeakResident()) / (1024.0 * 1024.0)));
  return equal ? 0 : 1;
}

#ifndef JQ_BENCH_REPORT_FRAME_KIND_H
#define JQ_BENCH_REPORT_FRAME_KIND_H

#include <array>
#include <string>
#include <vector>

namespace jqbench {

/// What became of a frame; each kind is timed for itself.
enum class FrameKind {
  kNotPlaced,       ///< judged and registered against a reference seen before
  kNotPlacedFirst,  ///< the same, against the reference that the last frame made
  kPlaced,          ///< fused into the mosaic as it is
  kPlacedGrown,     ///< fused after the mosaic had to grow
};
constexpr int kFrameKinds = 4;

const char* Name(FrameKind kind);

/// Times of library and plain twin on the same frames.
struct PairedTimes {
  std::vector<double> library;
  std::vector<double> plain;

  void add(double libraryMs, double plainMs) {
    library.push_back(libraryMs);
    plain.push_back(plainMs);
  }
};

using TimesByKind = std::array<PairedTimes, kFrameKinds>;

/// Frames that were compared, and how many of them were equal.
struct Equality {
  int equal = 0;
  int frames = 0;

  bool holds() const { return equal == frames && frames > 0; }
};

std::string TimesHeader();
/// The table rows of one run; each begins with `label`, cells and all.
std::string TimesRows(const std::string& label, const TimesByKind& times);
std::string EqualityLine(const std::string& what, const Equality& equality);

}  // namespace jqbench

#endif  // JQ_BENCH_REPORT_FRAME_KIND_H

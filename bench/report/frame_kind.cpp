#include "report/frame_kind.h"

#include <opencv2/core.hpp>

#include "report/statistics.h"

namespace jqbench {

const char* Name(FrameKind kind) {
  switch (kind) {
    case FrameKind::kNotPlaced:
      return "not placed";
    case FrameKind::kNotPlacedFirst:
      return "not placed, new reference";
    case FrameKind::kPlaced:
      return "placed";
    case FrameKind::kPlacedGrown:
      return "placed, mosaic grown";
  }
  return "";
}

std::string TimesHeader() {
  return "| run | frame | frames | library ms | p95 | plain ms | p95 | ratio |\n"
         "|---|---|---:|---:|---:|---:|---:|---:|\n";
}

std::string TimesRows(const std::string& label, const TimesByKind& times) {
  std::string rows;
  for (int k = 0; k < kFrameKinds; ++k) {
    const PairedTimes& pair = times[static_cast<size_t>(k)];
    if (pair.library.empty()) continue;
    rows += cv::format("| %s | %s | %zu | %.2f | %.2f | %.1f | %.1f | %.1f |\n", label.c_str(),
                       Name(static_cast<FrameKind>(k)), pair.library.size(), Median(pair.library),
                       Percentile(pair.library, 0.95), Median(pair.plain),
                       Percentile(pair.plain, 0.95), Median(pair.plain) / Median(pair.library));
  }
  return rows;
}

std::string EqualityLine(const std::string& what, const Equality& equality) {
  return cv::format("%s equal: %d of %d frames%s\n", what.c_str(), equality.equal, equality.frames,
                    equality.holds() ? "" : "  <-- DIFFERENT");
}

}  // namespace jqbench

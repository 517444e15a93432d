#include "inspect/pair_verdict.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace jqstitch {
namespace {

// The bounds of a live run, in the stitcher's own precision.
constexpr float kMinOverlap = 0.1f;
constexpr float kMaxOverlap = 0.9f;
constexpr int kLeastMatches = 11;

std::string PointText(cv::Point point) {
  return "(" + std::to_string(point.x) + ", " + std::to_string(point.y) + ")";
}

std::string LeftOut(const std::string& why, const std::string& advice) {
  return "B would be left out: " + why + ". " + advice;
}

}  // namespace

void DecideVerdict(PairAnalysis& pair) {
  pair.accepted = false;
  if (pair.cornersFirst.empty() || pair.cornersSecond.empty()) {
    const bool both = pair.cornersFirst.empty() && pair.cornersSecond.empty();
    pair.verdict =
        LeftOut(std::string("no corners found in ") +
                    (both ? "A and B" : (pair.cornersFirst.empty() ? "A" : "B")),
                "Look for a flat, dark or blurred frame, or one of fewer than 81 rows or columns.");
    return;
  }
  const int across = std::abs(pair.offset.x);
  const int down = std::abs(pair.offset.y);
  const float shift = static_cast<float>(std::max(across, down));
  const float extent = static_cast<float>(across > down ? pair.second.cols : pair.second.rows);
  char percent[16];
  std::snprintf(percent, sizeof(percent), "%.1f %%", static_cast<double>(100.0f * shift / extent));

  if (pair.support < kLeastMatches) {
    pair.verdict = LeftOut("too few matches (" + std::to_string(pair.support) + " of 11)",
                           "The frames may not overlap, or be too blurred or noisy.");
  } else if (!pair.overlapFit) {
    pair.verdict = LeftOut("the overlap test failed (" + pair.overlapWords + ")",
                           "Keep exposure and focus steady, or try the other --overlap-mode.");
  } else if (!(shift > (1.0f - kMaxOverlap) * extent)) {
    pair.verdict = LeftOut(std::string("the shift is too small (") + percent + " of the frame)",
                           "More than 10 % is needed; a later frame will do.");
  } else if (!(shift < (1.0f - kMinOverlap) * extent)) {
    pair.verdict = LeftOut(std::string("the shift is too large (") + percent + " of the frame)",
                           "Less than 90 % is needed; move more slowly.");
  } else {
    pair.accepted = true;
    pair.verdict = "B would be placed: offset " + PointText(pair.offset) + ", " + percent +
                   " of the frame, " + std::to_string(pair.support) + " of " +
                   std::to_string(pair.matchedFirst.size()) + " matches agree.";
  }
}

}  // namespace jqstitch

#include "words/live_status.h"

#include <cstdio>

#include "words/frame_words.h"

using jqhost::FrameResult;
using jqhost::Standing;
using jqhost::Track;

namespace jqstitch {
namespace {

std::string StateText(const jqhost::RunRecord& record, const Track& track,
                      const FrameResult& frame) {
  if (track.IsLost()) {
    std::string text = "lost since frame " + std::to_string(track.LostSince());
    // An unusable frame in between does not say why the track is lost.
    if (StandingOf(frame) == Standing::kLost) text += ": " + ShortReason(frame);
    if (track.LastHeld() > 0) {
      text += "; go back to where frame " + std::to_string(track.LastHeld()) + " was";
    }
    return text;
  }
  switch (StandingOf(frame)) {
    case Standing::kPlaced:
      return "placed";
    case Standing::kTracked:
      return "tracked, " + ShortReason(frame);
    default:
      return ReasonText(record, frame);
  }
}

}  // namespace

std::string StatusText(const jqhost::RunRecord& record, const Track& track,
                       const FrameResult& frame, std::int64_t memory) {
  std::string text = StateText(record, track, frame) + " (" +
                     std::to_string(track.Count(Standing::kPlaced)) + " placed";
  for (const Standing standing : {Standing::kTracked, Standing::kLost, Standing::kUnusable}) {
    const int count = track.Count(standing);
    if (count > 0) text += ", " + std::to_string(count) + " " + StandingName(standing);
  }
  text += ")";
  if (memory > 0) text += ", " + std::to_string((memory + 500000) / 1000000) + " MB";
  return text;
}

}  // namespace jqstitch

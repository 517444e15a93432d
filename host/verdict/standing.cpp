#include "host/verdict/standing.h"

namespace jqhost {

Standing StandingOf(const FrameResult& frame) {
  switch (frame.cause) {
    case Cause::kPlaced:
      return Standing::kPlaced;
    case Cause::kShiftTooSmall:
      return Standing::kTracked;
    case Cause::kNoCorners:
    case Cause::kNoReferenceCorners:
    case Cause::kOverlapTestFailed:
    case Cause::kTooFewMatches:
    case Cause::kShiftTooLarge:
    case Cause::kTakenBack:
    case Cause::kNotConnected:
      return Standing::kLost;
    case Cause::kSizeDiffers:
    case Cause::kUnreadable:
    case Cause::kFailed:
      return Standing::kUnusable;
    case Cause::kNotReached:
      break;
  }
  return Standing::kNotReached;
}

const char* StandingName(Standing standing) {
  switch (standing) {
    case Standing::kPlaced:
      return "placed";
    case Standing::kTracked:
      return "tracked";
    case Standing::kLost:
      return "lost";
    case Standing::kUnusable:
      return "unusable";
    case Standing::kNotReached:
      return "not reached";
  }
  return "";
}

void Track::Add(const FrameResult& frame) {
  const Standing standing = StandingOf(frame);
  ++m_counts[static_cast<int>(standing)];
  if (standing == Standing::kPlaced || standing == Standing::kTracked) {
    m_lostSince = 0;
    m_lastHeld = frame.number;
  } else if (standing == Standing::kLost && m_lostSince == 0) {
    m_lostSince = frame.number;
  }
}

}  // namespace jqhost

#ifndef JQHOST_VERDICT_STANDING_H
#define JQHOST_VERDICT_STANDING_H

#include "host/verdict/frame_result.h"

namespace jqhost {

/// How a frame of a live run stands to the picture.
enum class Standing {
  kPlaced,
  kTracked,     ///< followed, but not yet far enough from the frame placed last
  kLost,        ///< it shows something, but not where it lies
  kUnusable,    ///< no frame of this run: unreadable, of another size, or its call failed
  kNotReached,  ///< the run ended before it
};

Standing StandingOf(const FrameResult& frame);

/// "placed", "tracked", "lost", "unusable" or "not reached".
const char* StandingName(Standing standing);

/// How many frames stand how, and whether the run holds the track at the moment.
/// Frames that are unusable or not reached do not change that.
class Track {
 public:
  void Add(const FrameResult& frame);

  int Count(Standing standing) const { return m_counts[static_cast<int>(standing)]; }
  bool IsLost() const { return m_lostSince > 0; }
  /// Number of the first frame of the present loss; 0 while the track is held.
  int LostSince() const { return m_lostSince; }
  /// Number of the last frame that was placed or tracked; 0 before there is one.
  int LastHeld() const { return m_lastHeld; }

 private:
  int m_counts[5] = {};
  int m_lostSince = 0;
  int m_lastHeld = 0;
};

}  // namespace jqhost

#endif  // JQHOST_VERDICT_STANDING_H

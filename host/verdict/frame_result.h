#ifndef JQHOST_VERDICT_FRAME_RESULT_H
#define JQHOST_VERDICT_FRAME_RESULT_H

#include <opencv2/core.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/verdict/appearance.h"
#include "jqframeverdict.h"

#include "host/verdict/doubt/placement_doubt.h"

namespace jqhost {

/// What became of a frame, and why.
enum class Cause {
  kPlaced,
  kNoCorners,
  kNoReferenceCorners,
  kOverlapTestFailed,
  kTooFewMatches,
  kShiftTooSmall,
  kShiftTooLarge,
  kSizeDiffers,
  kUnreadable,
  kTakenBack,     ///< placed, and taken out again because its place is doubtful
  kNotConnected,  ///< of a set in any order: no trusted pair connects it with the picture
  kFailed,        ///< the call that should have stitched it raised
  kNotReached,    ///< the run ended before it
};

/// The cause as reports and events spell it, for example "too few matches".
const char* CauseName(Cause cause);

/// What became of one frame, as numbers. Lengths are pixels of the working scale.
struct FrameResult {
  std::string name;
  int number = 0;  ///< in its source, from 1
  Cause cause = Cause::kNotReached;
  std::string detail;      ///< what the system or a decoder said; empty for other causes
  cv::Size size;           ///< of a frame whose size differs, pixels of the file
  cv::Size expected;       ///< then the size of the others
  bool inherited = false;  ///< placed by its predecessor's offset, having no corners itself

  /// The stitcher's numbers; its `cause` is `kNone` for a frame that never came there.
  JQFrameVerdict measured;
  double shiftShare = 0.0;  ///< of the field of view; 0 when it was not measured

  /// Of a frame that failed the overlap test but could be measured.
  std::optional<Appearance> appearance;

  cv::Point position;  ///< of a placed frame: top-left corner, first frame at (0, 0)
  /// How far the place can be trusted, for a frame placed against another.
  std::optional<PlacementDoubt> doubt;
  double seconds = 0.0;
  std::vector<unsigned char> thumbnail;  ///< a small JPEG, where the run keeps them

  /// Share of the matched corners that agree with the offset; 0 when nothing was matched.
  double AgreeingShare() const {
    return measured.pairCount > 0 ? static_cast<double>(measured.matchCount) / measured.pairCount
                                  : 0.0;
  }
  bool Doubtful() const { return doubt && doubt->doubtful; }
  bool Placed() const { return cause == Cause::kPlaced; }
};

/// Results that a host reaches without the stitcher.
void SetUnreadable(const std::string& detail, FrameResult& result);
void SetSizeDiffers(cv::Size size, cv::Size expected, FrameResult& result);
void SetFailed(const std::string& detail, FrameResult& result);
void SetNotReached(const std::string& detail, FrameResult& result);

}  // namespace jqhost

#endif  // JQHOST_VERDICT_FRAME_RESULT_H

#ifndef JQSTITCH_RUN_FRAME_RESULT_H
#define JQSTITCH_RUN_FRAME_RESULT_H

#include <opencv2/core.hpp>
#include <string>

namespace jqstitch {

enum class Verdict {
  kPlaced,
  kNoCorners,
  kNoReferenceCorners,
  kOverlapTestFailed,
  kTooFewMatches,
  kShiftTooSmall,
  kShiftTooLarge,
  kSizeDiffers,
  kUnreadable,
  kFailed,
  kNotReached,
};

/// The verdict as reports and events spell it, for example "too few matches".
const char* VerdictName(Verdict verdict);

/// What became of one frame. Lengths are pixels of the working scale.
struct FrameResult {
  std::string name;
  int number = 0;  ///< in its source, from 1
  Verdict verdict = Verdict::kNotReached;
  std::string reason;  ///< one plain sentence; empty for a placed frame
  std::string advice;  ///< what to do about it; may be empty
  std::string note;    ///< a doubt about a placed frame; mostly empty

  bool registered = false;    ///< whether the three below were measured
  int matches = 0;            ///< of which 11 are needed
  cv::Point offset;           ///< against the frame placed before; not for placed frames
  double shiftPercent = 0.0;  ///< of the frame, along the larger component

  cv::Point position;  ///< of a placed frame: top-left corner, first frame at (0, 0)
  double seconds = 0.0;
};

}  // namespace jqstitch

#endif  // JQSTITCH_RUN_FRAME_RESULT_H

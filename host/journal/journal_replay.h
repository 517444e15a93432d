#ifndef JQHOST_JOURNAL_JOURNAL_REPLAY_H
#define JQHOST_JOURNAL_JOURNAL_REPLAY_H

#include <functional>

#include "host/journal/journal_folder.h"
#include "host/journal/journal_steps.h"
#include "jqstitchingstate.h"

namespace jqhost {

/// A run as it stood after its last recorded step.
struct ReplayedRun {
  /// What a stitcher needs to go on. Of a run that ended with a place to go on from: as
  /// it stood before that.
  JQStitchingState state;
  std::optional<cv::Point> continueAt;  ///< mosaic pixels; the place to go on from then
  cv::Point origin;                     ///< of the first frame in the mosaic
  cv::Mat firstFrame;                   ///< as taken in
  cv::Mat lastFrame;                    ///< the newest frame as it was recorded
};

/// Paints the mosaic of a recorded run anew: every frame at its recorded offset, by the
/// engine's blend. Nothing is judged.
///
/// The result is, bit for bit, what the run had when it recorded its last step, provided
/// that it saw no frame after it. Raises `InputError` where a file has changed, or where
/// the mosaic does not come out as the log tells; the text then names what can still be
/// used.
/// @param onFrame hears of each frame before it is painted, with its pixels as recorded;
///   false ends the work early
/// @return nothing where it was ended early
std::optional<ReplayedRun> ReplayRun(
    const JournalFolder& folder, const JournalSteps& steps,
    const std::function<bool(const FrameEntry&, const cv::Mat&)>& onFrame);

}  // namespace jqhost

#endif  // JQHOST_JOURNAL_JOURNAL_REPLAY_H

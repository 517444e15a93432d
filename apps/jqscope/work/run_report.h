#ifndef JQSCOPE_WORK_RUN_REPORT_H
#define JQSCOPE_WORK_RUN_REPORT_H

#include <QImage>
#include <QPoint>
#include <QRectF>
#include <QString>
#include <QVector>
#include <cstdint>
#include <map>
#include <optional>

#include "host/verdict/frame_result.h"
#include "words/live_state.h"
#include "work/timed_frame.h"

namespace jqscope {

enum class RunPhase {
  kIdle,  ///< no run yet: the live view alone
  kRunning,
  kPaused,
  kStopped,  ///< by the person
  kEnded,    ///< the source has come to its end
};

/// All that a window shows of a run, as values: made on the stitching thread, one after
/// another, of which the window takes the newest. Places are pixels of the working scale
/// from the first frame's corner.
struct RunReport {
  RunPhase phase = RunPhase::kIdle;

  // the frame under the camera
  bool hasFrame = false;
  jqhost::FrameResult last;  ///< meaningful once a frame was stitched
  LiveState state = LiveState::kNone;
  QImage live;               ///< the frame, at display size
  QRectF liveRect;           ///< where it lies, as far as is known
  bool liveMeasured = true;  ///< false: where it probably is
  Clock::time_point taken;   ///< when the source gave it
  double speed = 0.0;        ///< share of the frame moved since the frame before

  // the run
  QVector<QPoint> path;  ///< corners of the placed frames, in their order
  QRect lastPlaced;      ///< the frame placed last
  QRect bounds;          ///< of all placed frames
  QSize frameSize;       ///< at the working scale
  int detectLevel = 1;
  int stitched = 0;  ///< frames handed to the stitcher
  std::map<jqhost::Cause, int> causes;
  int dropped = 0;
  double framesPerSecond = 0.0;
  std::int64_t mosaicBytes = 0;
  bool outOfMemory = false;

  int undoSteps = 0;  ///< placed frames and places gone on from that can be taken back

  // Where the frame was measured, against where the ground placed earlier has it.
  bool hasDrift = false;
  double drift = 0.0;           ///< pixels
  QVector<float> driftHistory;  ///< the latest of this run, oldest first

  QString journalProblem;  ///< why the run is not recorded any more; empty: all is well

  QString notice;        ///< something to tell once
  int noticeNumber = 0;  ///< one more for each

  int Count(jqhost::Cause cause) const {
    const auto found = causes.find(cause);
    return found == causes.end() ? 0 : found->second;
  }
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_RUN_REPORT_H

#ifndef JQSCOPE_WORK_RUN_REPORT_H
#define JQSCOPE_WORK_RUN_REPORT_H

#include <QImage>
#include <QPoint>
#include <QRectF>
#include <QString>
#include <QStringList>
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
  kBatch,    ///< files are being stitched as a batch
};

/// How far a batch of files is.
struct BatchReport {
  int files = 0;      ///< that were asked for; 0 before that is known
  int stitching = 0;  ///< of these, the usable ones; 0 while they are looked at
  int done = 0;       ///< of the usable ones
  bool stopped = false;
  QString problem;       ///< why there is no picture; empty: there is one
  QStringList leftOut;   ///< names and reasons
  QStringList doubtful;  ///< names of placed files whose place is doubtful
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
  QRect canvas;          ///< the whole mosaic, with the empty room that it grows into
  QSize frameSize;       ///< at the working scale
  int detectLevel = 1;
  int stitched = 0;  ///< frames handed to the stitcher
  std::map<jqhost::Cause, int> causes;
  int dropped = 0;
  double framesPerSecond = 0.0;
  std::int64_t mosaicBytes = 0;
  std::int64_t mostMemory = 0;  ///< bytes of the mosaic at most; 0: no limit was set
  bool outOfMemory = false;

  int undoSteps = 0;  ///< placed frames and places gone on from that can be taken back

  // Where the frame was measured, against where the ground placed earlier has it.
  bool hasDrift = false;
  double drift = 0.0;           ///< pixels
  QVector<float> driftHistory;  ///< the latest of this run, oldest first

  std::optional<BatchReport> batch;  ///< of a run that is one

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

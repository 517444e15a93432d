#ifndef JQHOST_RUN_FRAME_LOOP_H
#define JQHOST_RUN_FRAME_LOOP_H

#include <string>

#include "host/run/push_session.h"
#include "host/run/run_observer.h"
#include "host/run/stop_token.h"
#include "host/source/frame_source.h"

namespace jqhost {

/// Which frames of a source a live run takes, and how fast.
struct LoopSettings {
  int every = 1;      ///< takes the first of so many frames
  int maxFrames = 0;  ///< 0: all
  double fps = 0.0;   ///< pace of a replay; 0: as fast as possible
};

/// What a loop did.
struct LoopEnd {
  int taken = 0;    ///< frames handed to the session
  int skipped = 0;  ///< passed over because of `every`
  bool sourceEnded = false;
};

/// Hands the frames of a source to a session until the source ends, enough frames
/// are taken, memory runs out or a stop is asked for. The observer hears of every
/// frame taken.
LoopEnd RunFrames(FrameSource& source, const LoopSettings& settings, const StopToken& stop,
                  PushSession& session, RunObserver& observer);

/// Notes in the record that a video ended well before the number of frames that it
/// announces. (The number is an estimate in some formats: one frame or one per cent
/// less says nothing.)
void NoteEarlyEnd(const FrameSource& source, const LoopEnd& end, RunRecord& record);

/// Tells the observer of the files that a loop which ended early did not reach.
/// Only a list of files knows them; for other sources nothing happens.
/// @param why becomes their `detail`
void TellUnreached(FrameSource& source, const std::string& why, int taken, RunObserver& observer);

}  // namespace jqhost

#endif  // JQHOST_RUN_FRAME_LOOP_H

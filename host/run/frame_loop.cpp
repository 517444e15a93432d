#include "host/run/frame_loop.h"

#include <algorithm>
#include <chrono>

namespace jqhost {
namespace {

int ExpectedFrames(const FrameSource& source, const LoopSettings& settings) {
  int expected = (source.Total() + settings.every - 1) / settings.every;
  if (settings.maxFrames > 0 && (expected == 0 || expected > settings.maxFrames)) {
    expected = settings.maxFrames;
  }
  return expected;
}

}  // namespace

LoopEnd RunFrames(FrameSource& source, const LoopSettings& settings, const StopToken& stop,
                  PushSession& session, RunObserver& observer) {
  using Clock = std::chrono::steady_clock;
  observer.OnBegin(ExpectedFrames(source, settings));
  const auto start = Clock::now();
  LoopEnd end;
  SourceFrame frame;
  // While the next frame is read, the doubt about the last one is looked into.
  FrameResult result;
  const auto tell = [&] {
    if (!session.IsUnsettled()) return;
    session.Settle(result);
    observer.OnFrame(result, end.taken);
  };
  while (!stop.Requested() && !session.OutOfMemory()) {
    if (settings.maxFrames > 0 && end.taken == settings.maxFrames) break;
    const bool wanted = (end.taken + end.skipped) % settings.every == 0;
    if (source.Waits()) tell();
    if (!source.Next(frame, wanted)) {
      end.sourceEnded = true;
      break;
    }
    tell();
    if (!wanted) {
      ++end.skipped;
      continue;
    }
    ++end.taken;
    result = session.TakeUnsettled(frame);
    if (!session.IsUnsettled()) observer.OnFrame(result, end.taken);
    if (settings.fps > 0) {
      tell();
      const std::chrono::duration<double> passed = Clock::now() - start;
      stop.Sleep(end.taken / settings.fps - passed.count());
    }
  }
  tell();
  return end;
}

void NoteEarlyEnd(const FrameSource& source, const LoopEnd& end, RunRecord& record) {
  const int given = end.taken + end.skipped;
  const int missing = source.Total() - given;
  if (!end.sourceEnded || source.IsFileList()) return;
  if (missing <= std::max(1, source.Total() / 100)) return;
  record.announced = source.Total();
  record.given = given;
}

void TellUnreached(FrameSource& source, const std::string& why, int taken, RunObserver& observer) {
  if (!source.IsFileList()) return;
  SourceFrame frame;
  while (source.Next(frame, false)) {
    FrameResult result;
    result.name = frame.name;
    result.number = frame.number;
    SetNotReached(why, result);
    observer.OnFrame(result, ++taken);
  }
}

}  // namespace jqhost

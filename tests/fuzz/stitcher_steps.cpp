#include "stitcher_steps.h"

#include "require.h"
#include "spoiled_state.h"
#include "stitcher_world.h"

void SetUndoDepth(Host& host) {
  host.undoDepth = host.in.oneIn(4) ? host.in.number() : host.in.u8() % 4;
  host.stitcher.SetUndoDepth(host.undoDepth);
  Shorten(host);
}

void Undo(Host& host) {
  const StitcherSnapshot before(host.stitcher);
  bool undone = false;
  if (Raises([&] { undone = host.stitcher.UndoLastFrame(); })) {
    before.requireRestored(host.stitcher);
    return;
  }
  Require(undone == !host.seen.empty(), "there is something to undo, or there is not");
  if (!undone) {
    before.requireRestored(host.stitcher);
    return;
  }
  host.seen.back().requireRestored(host.stitcher);
  host.seen.pop_back();
}

void Continue(Host& host) {
  FuzzInput& in = host.in;
  const StitcherSnapshot before(host.stitcher);
  cv::Point at = host.stitcher.GetCurrentPosition();
  if (in.oneIn(4)) {
    at = cv::Point(in.number(), in.number());
  } else if (in.oneIn(2)) {
    at += cv::Point(in.range(-40, 40), in.range(-40, 40));
  }
  bool continued = false;
  const bool raised = Raises([&] { continued = host.stitcher.ContinueAt(at); });
  if (raised || !continued) {
    before.requireRestored(host.stitcher);
    return;
  }
  Require(before.hasSameMosaic(host.stitcher), "going on elsewhere leaves the mosaic");
  Require(host.stitcher.GetCurrentPosition() == at, "the run goes on there");
  Require(host.stitcher.GetOffsetPosition() == cv::Point(), "without an offset");
  host.seen.push_back(before);
  Shorten(host);
}

// Into the stitcher itself, after which it is as before; or something that need not make
// sense into another, which takes it or does not and can then be used.
void SaveAndRestore(Host& host) {
  const StitcherSnapshot before(host.stitcher);
  JQStitchingState state;
  if (Raises([&] { state = host.stitcher.SaveState(); })) return;
  before.requireRestored(host.stitcher);
  if (host.in.oneIn(2) && state.started) {
    if (Raises([&] { host.stitcher.RestoreState(state); })) {
      // A batch run over a live one leaves what no live run can have.
      before.requireRestored(host.stitcher);
      return;
    }
    before.requireRestored(host.stitcher);
    Require(host.stitcher.GetUndoCount() == before.undoCount(), "the steps came along");
    return;
  }
  SpoilState(host.in, state);
  JQImageStitching other;
  if (Raises([&] { other.RestoreState(state); })) {
    Require(other.GetFrameCount() == 0 && other.GetMosaic().empty(), "nothing has changed");
  }
  for (int k = 0; k < 3; ++k) {
    WorldRecord record(World::View(host.camera, host.frameSize));
    Raises([&] { other.Stitching(record.get(), host.mode, 1, 8); });
    Raises([&] { other.ContinueAt(other.GetCurrentPosition()); });
    Raises([&] { other.UndoLastFrame(); });
    Raises([&] { other.CutEdge(); });
    _tagJQIMG* shown = other.GetImageStitching(record.get());
    if (shown != nullptr) ReadAll(*shown);
  }
}

void LimitMemory(Host& host) {
  const cv::Mat mosaic = host.stitcher.GetMosaic();
  const auto now = static_cast<std::int64_t>(mosaic.total() * mosaic.elemSize());
  host.stitcher.SetMemoryLimit(host.in.oneIn(2) ? now : host.in.number());
}

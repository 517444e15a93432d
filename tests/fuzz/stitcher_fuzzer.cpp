// Random calls on one stitcher, as a careless host makes them: frames of odd sizes,
// null pointers, records that make no sense, members written with anything, batch and
// live runs in turn. Whatever comes, a call answers or raises what it documents, and
// leaves the run sound.

#include <QMetaObject>
#include <memory>
#include <opencv2/core/utils/logger.hpp>

#include "fuzz_input.h"
#include "limited_matrices.h"
#include "require.h"
#include "stitcher_host.h"
#include "stitcher_invariants.h"
#include "stitcher_steps.h"
#include "stitcher_world.h"

namespace {

constexpr int kMostCalls = 12;

void TakeFrame(Host& host, const cv::Mat& frame) {
  WorldRecord record(frame, host.in);
  const StitcherSnapshot before(host.stitcher);
  _tagJQIMG* shown = nullptr;
  const bool raised = Raises(
      [&] { shown = host.stitcher.Stitching(record.get(), host.mode, host.level, host.budget); });
  if (raised) {
    before.requireUnchanged(host.stitcher);
    Require(!host.stitcher.IsLastFrameAccepted(), "a frame whose call raised is not placed");
    return;
  }
  Require(shown != nullptr && shown != record.get(), "the stitcher's own record comes back");
  // What a batch run has left is replaced, and not kept.
  const bool startsAnew = before.frameCount() == 0 && before.hasMosaic();
  if (host.stitcher.GetLastVerdict().cause == JQFrameCause::kPlaced && !startsAnew) {
    host.seen.push_back(before);
    Shorten(host);
  }
  if (host.stitcher.GetFrameCount() > 0) {
    RequireRecordOf(*shown, *record.get(), host.stitcher.GetMosaic());
    const bool startedMosaic = before.frameCount() == 0;
    if (!host.stitcher.IsLastFrameAccepted() && !startedMosaic)
      before.requireUnchanged(host.stitcher);
  }
}

// The camera moves by up to a quarter of a frame.
void TakeNextFrame(Host& host) {
  const cv::Size size = host.frameSize;
  host.camera.x += host.in.range(-size.width / 4, size.width / 4);
  host.camera.y += host.in.range(-size.height / 4, size.height / 4);
  TakeFrame(host, World::View(host.camera, size));
}

void TakeOddFrame(Host& host) {
  const cv::Size size(host.in.range(1, 200), host.in.range(1, 160));
  if (host.in.oneIn(2)) {
    TakeFrame(host, World::View(host.camera, size));
  } else {
    TakeFrame(host, cv::Mat(size, CV_8UC3, cv::Scalar::all(host.in.u8())));
  }
}

void TakeNothing(Host& host) {
  const StitcherSnapshot before(host.stitcher);
  Require(host.stitcher.Stitching(nullptr, host.mode, host.level, host.budget) == nullptr,
          "no frame, no record");
  before.requireUnchanged(host.stitcher);
}

void Trim(Host& host) {
  const StitcherSnapshot before(host.stitcher);
  std::unique_ptr<WorldRecord> record;
  if (host.in.oneIn(2)) record = std::make_unique<WorldRecord>(World::View({}, {8, 8}));
  _tagJQIMG* given = record ? record->get() : nullptr;
  Raises([&] {
    if (host.in.oneIn(3)) {
      host.stitcher.CutEdge();
      return;
    }
    const _tagJQIMG* shown = host.stitcher.CutEdge(given);
    if (shown != nullptr && shown != given) ReadAll(*shown);
  });
  before.requireUnchanged(host.stitcher);
}

void Show(Host& host) {
  WorldRecord record(World::View({}, {8, 8}));
  _tagJQIMG* given = host.in.oneIn(4) ? nullptr : record.get();
  _tagJQIMG* shown = host.stitcher.GetImageStitching(given);
  if (shown != nullptr) ReadAll(*shown);
}

void Recolour(Host& host) {
  const StitcherSnapshot before(host.stitcher);
  const int blue = host.in.number(), green = host.in.number(), red = host.in.number();
  Raises([&] { host.stitcher.ChangeStitchingBackground(blue, green, red); });
  // At level 1 the current picture of a run can be the reference, never the mosaic.
  before.requireUnchanged(host.stitcher);
}

void Save(Host& host) {
  const char* names[] = {"", "out.bmp", "out.png", "out.nothing", "no/such/folder.bmp"};
  const char* name = names[host.in.u8() % 5];
  const QString path = *name == 0 ? QString() : World::path(name);
  Raises([&] { host.stitcher.SaveImageStitching(path); });
}

void RunBatch(Host& host) {
  host.stitcher.m_fileList.clear();
  for (int n = host.in.u8() % 6; n > 0; --n) {
    host.stitcher.m_fileList.append(World::file(host.in.u8()));
  }
  Raises([&] {
    QMetaObject::invokeMethod(&host.stitcher, "slotStartStitching", Qt::DirectConnection);
  });
  // A refused run leaves the steps; one that was started drops them.
  if (host.stitcher.GetUndoCount() == 0) host.seen.clear();
}

cv::Mat CanvasFrame(FuzzInput& in) {
  const int cube[] = {2, 3, 4};
  switch (in.u8() % 8) {
    case 0:
      return cv::Mat();
    case 1:
      return cv::Mat(3, cube, CV_8UC3, cv::Scalar::all(9));
    case 2:
      return cv::Mat(in.range(0, 9), in.range(0, 9), CV_MAKETYPE(in.u8() % 7, 1 + in.u8() % 4),
                     cv::Scalar::all(9));
    case 3:
      return cv::Mat(in.range(1, 60), in.range(1, 60), CV_8UC1, cv::Scalar::all(9));
    default:
      return World::View({}, cv::Size(in.range(1, 60), in.range(1, 60)));
  }
}

void UseCanvas(Host& host) {
  cv::Mat frame = CanvasFrame(host.in);
  cv::Mat* given = host.in.oneIn(8) ? nullptr : &frame;
  Raises([&] {
    switch (host.in.u8() % 3) {
      case 0:
        return host.stitcher.initResultMat(given);
      case 1:
        return host.stitcher.extendResultMat(given);
      default:
        return host.stitcher.findCutPoint(given);
    }
  });
}

void WriteMembers(Host& host) {
  FuzzInput& in = host.in;
  JQImageStitching& s = host.stitcher;
  switch (in.u8() % 8) {
    case 0:
      s.m_canvasRows = in.number();
      s.m_canvasCols = in.number();
      break;
    case 1:
      s.m_frameRows = in.number();
      s.m_frameCols = in.number();
      break;
    case 2:
      s.m_framePos = cv::Point(in.number(), in.number());
      break;
    case 3:
    case 4:
      s.m_frameOffset = cv::Point(in.number(), in.number());
      break;
    case 5:
      s.m_contentRect = {in.number(), in.number(), in.number(), in.number()};
      break;
    case 6:
      s.m_frameSize = cv::Size(in.number(), in.number());
      break;
    default:
      s.m_resultMat = CanvasFrame(in);
  }
}

void CallOnce(Host& host) {
  switch (host.in.u8() % 27) {
    case 0:
      return TakeNothing(host);
    case 1:
      return host.stitcher.RequestStop();
    case 2:
      return TakeOddFrame(host);
    case 3:
      return Trim(host);
    case 4:
      return Show(host);
    case 5:
      return Recolour(host);
    case 6:
      return Save(host);
    case 7:
      return RunBatch(host);
    case 8:
    case 9:
      return UseCanvas(host);
    case 10:
    case 11:
      return WriteMembers(host);
    case 20:
      return SetUndoDepth(host);
    case 21:
    case 22:
      return Undo(host);
    case 23:
    case 24:
      return Continue(host);
    case 25:
      return SaveAndRestore(host);
    case 26:
      return LimitMemory(host);
    default:
      return TakeNextFrame(host);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
  cv::setNumThreads(1);
  World::Create();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LimitedMatrices matrices(std::size_t{16} << 20);
  Host host{FuzzInput(data, size), {}, 0, 1, 8, cv::Point(600, 500), {}, {}, 0};
  FuzzInput& in = host.in;
  host.mode = in.oneIn(2) ? 0 : in.number();
  host.level = in.oneIn(8) ? in.number() : 1 + in.u8() % 3;
  host.budget = in.oneIn(4) ? in.number() : 8;
  host.frameSize = cv::Size(in.range(90, 200), in.range(90, 170)) * (host.level == 2 ? 2 : 1);
  for (int n = 0; n < kMostCalls && !in.atEnd(); ++n) {
    CallOnce(host);
    Require(host.stitcher.GetUndoCount() == static_cast<int>(host.seen.size()),
            "every step can be taken back");
    RequireSound(host.stitcher);
  }
  return 0;
}

#include "live/live_run.h"

#include <algorithm>
#include <new>

#include "console/interrupt.h"
#include "input/image_record.h"
#include "input_error.h"
#include "output/picture_format.h"

namespace jqstitch {
namespace {

constexpr int kPreviewSide = 1280;
constexpr double kPreviewEvery = 1.0;  // seconds

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

int ExpectedFrames(const FrameSource& source, const LiveOptions& options) {
  int expected = (source.Total() + options.every - 1) / options.every;
  if (options.maxFrames > 0 && (expected == 0 || expected > options.maxFrames)) {
    expected = options.maxFrames;
  }
  return expected;
}

}  // namespace

LiveRun::LiveRun(const LiveOptions& options, Console& console)
    : m_options(options), m_console(console), m_recorder("live", options.run, console) {
  m_recorder.Record().settings = options.settings;
}

int LiveRun::Run() {
  const InterruptGuard guard;
  const auto source =
      OpenFrameSource(m_options.source, OutputPaths(m_options.run, m_options.preview));
  m_recorder.Begin(ExpectedFrames(*source, m_options));
  m_lastSave = m_lastPreview = Clock::now();
  TakeFrames(*source);
  if (StopRequested()) m_recorder.NoteStopped(StopReason());
  AddUnreached(*source);
  RunRecord& record = m_recorder.Record();
  if (record.frames.empty()) {
    m_console.EndProgress();
    throw InputError("the source gave no frames");
  }
  const Picture picture = FinalPicture();
  if (m_judge) {
    record.frameSize = m_judge->FrameSize();
    const bool hasMosaic = !m_stitcher.GetMosaic().empty();
    record.workingSize = hasMosaic ? m_judge->WorkingSize() : m_judge->FrameSize();
    record.firstCorner = hasMosaic ? m_judge->Origin() - picture.origin : cv::Point(0, 0);
    if (!m_options.preview.empty()) SaveQuietly(m_options.preview, kPreviewSide, true);
  }
  return m_recorder.Deliver(picture);
}

void LiveRun::TakeFrames(FrameSource& source) {
  const auto start = Clock::now();
  int taken = 0, seen = 0;
  SourceFrame frame;
  while (!StopRequested() && !m_outOfMemory) {
    if (m_options.maxFrames > 0 && taken == m_options.maxFrames) return;
    const bool wanted = seen % m_options.every == 0;
    if (!source.Next(frame, wanted)) return;
    ++seen;
    if (!wanted) {
      ++m_recorder.Record().skipped;
      continue;
    }
    Take(frame);
    ++taken;
    RefreshFiles();
    if (m_options.fps > 0) SleepUnlessStopped(taken / m_options.fps - SecondsSince(start));
  }
}

void LiveRun::Take(SourceFrame& frame) {
  FrameResult result;
  result.name = frame.name;
  result.number = frame.number;
  const std::string unfit = frame.image.empty() ? frame.why : WhyNoRecord(frame.image);
  if (!unfit.empty()) {
    ExplainUnreadable(unfit, result);
  } else if (m_judge && frame.image.size() != m_judge->FrameSize()) {
    // The stitcher does not compare sizes itself.
    ExplainSize(frame.image.size(), m_judge->FrameSize(), result);
  } else {
    Stitch(frame.image, result);
  }
  m_recorder.Add(result);
}

void LiveRun::Stitch(const cv::Mat& image, FrameResult& result) {
  const auto start = Clock::now();
  const StitchSettings& settings = m_options.settings;
  if (!m_judge && std::min(image.cols, image.rows) < settings.detectLevel) {
    return ExplainUnreadable(
        "it is too small for --detect-level " + std::to_string(settings.detectLevel), result);
  }
  try {
    _tagJQIMG record = MakeRecord(image);
    m_stitcher.Stitching(&record, settings.overlapMode, settings.detectLevel,
                         settings.cornerBudget);
    if (!m_judge) {
      m_judge.emplace(settings, AsTakenIn(image));
      m_judge->JudgeFirst(result);
    } else {
      m_judge->Judge(
          m_stitcher, [&] { return AsTakenIn(image); }, result);
    }
    if (result.verdict == Verdict::kPlaced) m_unsaved = m_unshown = true;
  } catch (const cv::Exception& error) {
    // The run goes on: such a call leaves the mosaic as it was.
    m_outOfMemory = error.code == cv::Error::StsNoMem;
    ExplainFailure(m_outOfMemory ? "out of memory" : error.err, result);
  } catch (const std::bad_alloc&) {
    m_outOfMemory = true;
    ExplainFailure("out of memory", result);
  }
  if (m_outOfMemory) m_recorder.Note("Stopped for want of memory; try a higher --detect-level");
  result.seconds = SecondsSince(start);
}

void LiveRun::AddUnreached(FrameSource& source) {
  const bool asked = StopRequested();
  if (!source.IsFileList() || (!asked && !m_outOfMemory)) return;
  SourceFrame frame;
  while (source.Next(frame, false)) {
    FrameResult result;
    result.name = frame.name;
    result.number = frame.number;
    ExplainNotReached(asked ? std::string("stopped by ") + StopReason() : "out of memory", result);
    m_recorder.Add(result);
  }
}

void LiveRun::RefreshFiles() {
  if (m_unsaved && m_options.saveEvery > 0 && SecondsSince(m_lastSave) >= m_options.saveEvery) {
    SaveQuietly(m_options.run.output, 0, false);
    m_lastSave = Clock::now();
    m_unsaved = false;
  }
  if (m_unshown && !m_options.preview.empty() && SecondsSince(m_lastPreview) >= kPreviewEvery) {
    SaveQuietly(m_options.preview, kPreviewSide, true);
    m_lastPreview = Clock::now();
    m_unshown = false;
  }
}

// While frames come in, a picture that cannot be saved is no reason to stop.
void LiveRun::SaveQuietly(const std::string& path, int longest, bool isPreview) {
  try {
    Picture picture = TakePicture(m_stitcher, m_options.run.trim);
    if (picture.image.empty()) picture.image = m_judge->FirstFrame();
    const cv::Mat image = WithBackground(
        longest > 0 ? Shrink(picture.image, longest) : picture.image, m_options.run.background);
    SavePicture(path, image);
    m_console.Event({{"event", isPreview ? "preview" : "picture"},
                     {"path", path},
                     {"width", image.cols},
                     {"height", image.rows},
                     {"final", false}});
  } catch (const std::exception& error) {
    m_console.Complain(error.what());
  }
}

Picture LiveRun::FinalPicture() {
  Picture picture;
  if (!m_judge) return picture;
  picture = m_options.run.trim ? TrimPicture(m_stitcher) : TakePicture(m_stitcher, false);
  if (picture.image.empty()) {
    picture.image = m_judge->FirstFrame();
    picture.trimmedBy = "placed frames";
  } else if (m_options.run.trim && picture.trimmedBy != "content box") {
    m_recorder.Note(
        "Trimmed to the placed frames, because the library's own box does not hold all of them");
  }
  return picture;
}

}  // namespace jqstitch

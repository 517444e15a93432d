#include "file_run.h"

#include <chrono>

#include "host/input_error.h"
#include "host/record/html_report.h"
#include "host/record/json_report.h"
#include "host/run/batch_session.h"
#include "host/source/path_list.h"
#include "words.h"

using jqhost::BatchSession;
using jqhost::FrameResult;
using jqhost::InputError;

namespace jqpython {
namespace {

// Told all at once, so that they can be mended all at once.
[[noreturn]] void Refuse(BatchSession& session, const jqhost::RunRecord& record) {
  const ModuleWords words;
  std::string text;
  for (const FrameResult& result : session.Results()) {
    if (result.cause == jqhost::Cause::kNotReached) continue;
    text += (text.empty() ? "" : "; ") + result.name + ": " + words.Reason(record, result);
  }
  throw InputError(text.empty() ? "there is no file to stitch" : text);
}

}  // namespace

FileRun StitchFiles(const std::vector<std::string>& paths, bool skipBad,
                    const jqhost::StopToken& stop, jqhost::RunObserver& observer) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  FileRun run;
  run.record.program = "jqstitching " JQPYTHON_VERSION;
  run.record.command = "batch";
  run.record.settings = jqhost::BatchSettings();

  jqhost::FramePreparation preparation{jqhost::PreparationSettings()};
  const std::vector<std::string> files = jqhost::ExpandFolders(paths, {});
  const jqhost::BatchFiles prepared(jqhost::ExpandPages(files), preparation, jqhost::kMostPixels,
                                    stop);
  run.record.samples = preparation.Summary();
  BatchSession session(prepared.Files(), jqhost::kMostPixels, stop, observer);
  if (stop.Requested() || !session.Run(skipBad)) Refuse(session, run.record);
  session.CloseResults("the run ended before");
  run.record.frames = session.Results();
  if (const FrameResult* failed = session.FailedFile()) {
    run.record.notes.push_back("Stopped at " + failed->name + ": " + failed->detail);
  }

  const jqhost::Picture trimmed = session.FinalPicture(true);
  const jqhost::Picture whole = session.FinalPicture(false);
  session.Describe(trimmed, run.record);
  run.mosaic = whole.image;
  run.placed = cv::Rect(trimmed.origin, trimmed.image.size());
  run.onlyFirst = whole.isFirstFrame;
  run.record.pictureSize = trimmed.image.size();
  run.record.trimmedBy = trimmed.trimmedBy;
  run.record.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  return run;
}

Verdict VerdictOf(const FrameResult& frame) {
  Verdict verdict = MakeVerdict(frame, jqhost::BatchSettings().detectLevel);
  verdict.name = frame.name;
  if (frame.Placed()) verdict.doubtful = frame.Doubtful();
  return verdict;
}

std::vector<Verdict> VerdictsOf(const FileRun& run) {
  std::vector<Verdict> verdicts;
  verdicts.reserve(run.record.frames.size());
  for (const FrameResult& frame : run.record.frames) {
    verdicts.push_back(VerdictOf(frame));
    if (frame.Placed()) verdicts.back().position = CornerInPicture(run.record, frame);
  }
  return verdicts;
}

jqhost::SaveOptions SaveOptionsOf(const FileRun& run, const std::string& path, double pixelSize) {
  jqhost::SaveOptions options;
  options.path = path;
  options.grey = run.record.samples.grey;
  // A batch run works at full size, so that pixels of frame and picture are alike.
  if (pixelSize > 0) options.pixelSize = cv::Size2d(pixelSize, pixelSize);
  return options;
}

std::string JsonReportOf(const jqhost::RunRecord& record) {
  return jqhost::JsonText(jqhost::ReportJson(record, ModuleWords()));
}

std::string HtmlReportOf(const jqhost::RunRecord& record, const cv::Mat& picture) {
  return jqhost::HtmlReport(record, picture, ModuleWords());
}

}  // namespace jqpython
